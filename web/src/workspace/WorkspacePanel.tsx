import { useEffect } from 'preact/hooks';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import type { Variable } from '../engine/core/protocol';
import { copyText } from '../design/clipboard';
import { Empty, IconButton } from '../design/widgets';
import { sizeText } from '../files/core/names';
import { text as t } from '../texts/texts';
import { kLargestSheet } from './core/workspace';
import { Sheet } from './Sheet';

/// Of a longer text the beginning is shown.
const kLongestText = 200_000;

export default function WorkspacePanel() {
  const app = useApp();
  const { workspace } = app;
  useEffect(() => {
    void workspace.refresh();
  }, []);
  const open = workspace.open.value;
  return (
    <Panel
      id="workspace"
      label={t.shell.workspace}
      title={open ? <Title app={app} variable={open} /> : t.shell.workspace}
      actions={
        open && (
          <IconButton
            icon="copy"
            label={t.workspace.copyText}
            onClick={() =>
              void copyText(workspace.shownText.value).then((done) => {
                if (done) app.dialogs.say(t.console.copied);
              })
            }
          />
        )
      }
    >
      {open ? (
        <Look app={app} variable={open} />
      ) : workspace.variables.value.length ? (
        <List app={app} />
      ) : (
        <Empty title={t.workspace.emptyTitle} text={t.workspace.emptyText} />
      )}
    </Panel>
  );
}

/// The preview without the class and size, which stand beside it.
const valueOf = (variable: Variable) => variable.preview.replace(/^[A-Z]\w* \[[^\]]*\] ?/, '');
const sizeOf = (variable: Variable) => variable.size.join(' × ');

function Title({ app, variable }: { app: App; variable: Variable }) {
  return (
    <div class="variable-title">
      <IconButton icon="back" label={t.workspace.back} onClick={() => app.workspace.look(null)} />
      <h2>{variable.name}</h2>
      <small>
        {sizeOf(variable)} {variable.class}
      </small>
    </div>
  );
}

function List({ app }: { app: App }) {
  return (
    <ul class="variables" aria-label={t.workspace.table}>
      {app.workspace.variables.value.map((variable) => (
        <li key={variable.name}>
          <button type="button" onClick={() => app.workspace.look(variable.name)}>
            <b>{variable.name}</b>
            <span class="preview">{valueOf(variable)}</span>
            <span class="kind">
              {sizeOf(variable)} {variable.class}
            </span>
            <span class="bytes">{sizeText(variable.bytes)}</span>
          </button>
        </li>
      ))}
    </ul>
  );
}

function Look({ app, variable }: { app: App; variable: Variable }) {
  const table = app.workspace.table.value;
  if (table) return <Sheet app={app} variable={variable} table={table} />;
  const { isTooLarge, shownText } = app.workspace;
  const { length } = shownText.value;
  return (
    <>
      <pre class="shown-text" tabIndex={0} role="region" aria-label={t.workspace.shownText(variable.name)}>
        {shownText.value.slice(0, kLongestText)}
      </pre>
      {(isTooLarge.value || length > kLongestText) && (
        <p class="sheet-note">
          {isTooLarge.value && `${t.workspace.noSheet(kLargestSheet)} `}
          {length > kLongestText && t.workspace.textShown(kLongestText, length)}
        </p>
      )}
    </>
  );
}
