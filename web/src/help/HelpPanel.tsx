import { useEffect, useRef } from 'preact/hooks';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import type { DocFile } from '../engine/core/protocol';
import { Icon } from '../design/icons';
import { Empty, IconButton, Segments } from '../design/widgets';
import { text as t } from '../texts/texts';
import { HelpPage } from './HelpPage';

export default function HelpPanel() {
  const app = useApp();
  const { help } = app;
  const page = help.path.value;
  useEffect(() => {
    void help.loadTree();
  }, []);
  const name = help.files.value?.find((file) => file.relativePath === page)?.displayName;
  return (
    <Panel
      id="help"
      label={t.shell.help}
      title={
        page ? (
          <div class="help-title">
            <IconButton icon="back" label={t.help.back} onClick={() => help.back()} />
            <h2>{name ?? t.shell.help}</h2>
          </div>
        ) : (
          t.shell.help
        )
      }
      actions={page && <IconButton icon="list" label={t.help.contents} onClick={() => help.toContents()} />}
    >
      {page ? <HelpPage app={app} key={page} path={page} /> : <Contents app={app} />}
    </Panel>
  );
}

function Contents({ app }: { app: App }) {
  const { help } = app;
  const timer = useRef(0);
  const hits = help.hits.value;
  const search = (text: string) => {
    clearTimeout(timer.current);
    timer.current = window.setTimeout(() => void help.search(text), 150);
  };
  return (
    <>
      <label class="search-field">
        <Icon name="search" />
        <input
          type="search"
          class="field"
          placeholder={t.help.search}
          aria-label={t.help.search}
          value={help.query.value}
          onInput={(event) => search(event.currentTarget.value)}
        />
      </label>
      {help.query.value && (
        <div class="help-scope">
          <Segments
            label={t.help.scope}
            value={help.scope.value}
            options={[
              ['title', t.help.title],
              ['content', t.help.content],
            ]}
            onChange={(scope) => void help.search(help.query.value, scope)}
          />
        </div>
      )}
      {hits === 'searching' ? (
        <p class="files-note">{t.help.searching}</p>
      ) : hits ? (
        <Hits app={app} />
      ) : (
        <Tree app={app} />
      )}
    </>
  );
}

function Hits({ app }: { app: App }) {
  const { help } = app;
  const hits = help.hits.value;
  if (!Array.isArray(hits)) return null;
  if (!hits.length) return <Empty title={t.help.nothing} />;
  return (
    <ul class="help-list" aria-label={t.help.search}>
      {hits.map((hit) => (
        <li key={hit.relativePath}>
          <button type="button" class="help-row page" onClick={() => void openPage(app, hit.relativePath)}>
            <span>
              <b>{hit.displayName}</b>
              {hit.excerpt && <small>{hit.excerpt}</small>}
            </span>
          </button>
        </li>
      ))}
    </ul>
  );
}

const depthOf = (file: DocFile) => file.relativePath.split('/').length - 1;

function Tree({ app }: { app: App }) {
  const { help } = app;
  const files = help.files.value;
  if (!files)
    return (
      <p class="files-note" aria-busy="true">
        {t.help.loading}
      </p>
    );
  const open = help.openFolders.value;
  const shown = files.filter((file) => {
    const parts = file.relativePath.split('/');
    return parts.slice(1).every((_, k) => open.has(parts.slice(0, k + 1).join('/')));
  });
  return (
    <ul class="help-list" aria-label={t.help.contents}>
      {shown.map((file) => (
        <li key={file.relativePath} class={`depth-${Math.min(3, depthOf(file))}`}>
          {file.isDir ? (
            <button
              type="button"
              class="help-row"
              aria-expanded={open.has(file.relativePath)}
              onClick={() => help.toggleFolder(file.relativePath)}
            >
              <Icon name={open.has(file.relativePath) ? 'chevronDown' : 'forward'} />
              <b>{file.displayName}</b>
            </button>
          ) : (
            <button type="button" class="help-row page" onClick={() => void openPage(app, file.relativePath)}>
              <span>{file.displayName}</span>
            </button>
          )}
        </li>
      ))}
    </ul>
  );
}

const openPage = (app: App, path: string) => app.help.open(path, app.settings.values.value?.docTextSize ?? 100);
