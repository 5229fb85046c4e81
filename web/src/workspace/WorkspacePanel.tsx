import { useEffect } from 'preact/hooks';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import type { Variable } from '../engine/core/protocol';
import { copyText } from '../design/clipboard';
import { Empty, IconButton } from '../design/widgets';
import { sizeText } from '../files/core/names';
import { text as t } from '../texts/texts';
import { Sheet } from './Sheet';

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
  return (
    <pre class="shown-text" tabIndex={0} role="region" aria-label={t.workspace.shownText(variable.name)}>
      {app.workspace.shownText.value.slice(0, 200_000)}
    </pre>
  );
}
