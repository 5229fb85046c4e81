import { useEffect, useRef } from 'preact/hooks';
import { useSignal, useSignalEffect } from '@preact/signals';
import { EditorView } from '@codemirror/view';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import { Empty, IconButton, showMenu } from '../design/widgets';
import { Icon } from '../design/icons';
import { setOwnKeyboard } from '../code/codeField';
import { Suggestions } from '../code/suggestions';
import { SuggestionStrip } from '../code/SuggestionStrip';
import { TypingView } from '../code/typingView';
import { ownKeyboardWanted } from '../code/useOwnKeyboard';
import { text as t } from '../texts/texts';
import { isDirty, isProgram, nameOf, type OpenFile } from './core/editor';
import {
  changeTo,
  dropState,
  editLines,
  runAndLook,
  keepState,
  makeState,
  nameAtCaret,
  openSearch,
  redo,
  selectedText,
  setMarks,
  undo,
} from './fileView';

export function EditorPanel() {
  const app = useApp();
  const { editor } = app;
  const file = editor.active.value;
  const view = useRef<EditorView | null>(null);
  return (
    <Panel
      id="editor"
      label={t.shell.editor}
      title={<Tabs app={app} />}
      actions={file && <Actions app={app} file={file} view={() => view.current} />}
    >
      {file ? <Field app={app} path={file.path} view={view} /> : <NoFile app={app} />}
    </Panel>
  );
}

function Tabs({ app }: { app: App }) {
  const { editor } = app;
  const files = editor.files.value;
  if (!files.length) return <h2>{t.shell.editor}</h2>;
  return (
    <div class="tabs" role="group" aria-label={t.editor.tabs} onKeyDown={(event) => moveTab(event, app)}>
      {files.map((file) => {
        const on = file.path === editor.activePath.value;
        return (
          <div class={`tab${on ? ' on' : ''}${isDirty(file) ? ' dirty' : ''}`} key={file.path}>
            <button
              type="button"
              class="tab-name"
              aria-current={on ? 'true' : undefined}
              tabIndex={on ? 0 : -1}
              title={file.path}
              onClick={() => void editor.open(file.path)}
            >
              {nameOf(file.path)}
              {isDirty(file) && <span class="visually-hidden"> {t.editor.unsaved}</span>}
            </button>
            <button
              type="button"
              class="tab-close"
              tabIndex={on ? 0 : -1}
              aria-label={t.editor.closeTab(nameOf(file.path))}
              onClick={() =>
                void editor.close(file.path).then(() => {
                  if (!editor.files.value.some((each) => each.path === file.path)) dropState(file.path);
                })
              }
            >
              <Icon name="close" />
            </button>
          </div>
        );
      })}
    </div>
  );
}

function moveTab(event: KeyboardEvent, app: App): void {
  const step = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
  if (!step) return;
  const paths = app.editor.files.value.map((file) => file.path);
  const next = paths[(paths.indexOf(app.editor.activePath.value!) + step + paths.length) % paths.length]!;
  const tabs = event.currentTarget as HTMLElement;
  void app.editor.open(next).then(() => tabs.querySelector<HTMLElement>('.on .tab-name')?.focus());
}

function Actions({ app, file, view }: { app: App; file: OpenFile; view(): EditorView | null }) {
  const on = (work: (field: EditorView) => unknown) => () => {
    const field = view();
    if (field) {
      field.focus();
      void work(field);
    }
  };
  const busy = app.console.busy.value;
  const program = isProgram(file.path);
  const more = (event: MouseEvent) =>
    showMenu(event, t.editor.more, [
      { label: t.editor.undo, icon: 'undo', keys: t.editor.keys.undo, onPick: on(undo) },
      { label: t.editor.redo, icon: 'redo', keys: t.editor.keys.redo, onPick: on(redo) },
      { label: t.editor.find, icon: 'search', keys: t.editor.keys.find, onPick: on(openSearch) },
      ...(!program
        ? []
        : [
            {
              label: t.editor.runSelection,
              icon: 'run' as const,
              divided: true,
              disabled: busy,
              onPick: on((field) => app.runText(selectedText(field.state))),
            },
            {
              label: t.editor.comment,
              icon: 'comment' as const,
              keys: t.editor.keys.comment,
              divided: true,
              onPick: on((field) => editLines(app, field, 'editor/comment')),
            },
            {
              label: t.editor.uncomment,
              icon: 'comment' as const,
              onPick: on((field) => editLines(app, field, 'editor/uncomment')),
            },
            {
              label: t.editor.indent,
              icon: 'indent' as const,
              keys: t.editor.keys.indent,
              onPick: on((field) => editLines(app, field, 'editor/indent')),
            },
            {
              label: t.editor.helpOnName,
              icon: 'help' as const,
              keys: t.editor.keys.help,
              divided: true,
              onPick: on((field) => {
                const name = nameAtCaret(field.state);
                if (name) void app.showHelpOn(name);
              }),
            },
          ]),
    ]);
  return (
    <>
      <IconButton
        icon="save"
        label={t.editor.save}
        disabled={!isDirty(file)}
        onClick={() => void app.editor.save(file.path)}
      />
      <IconButton icon="more" label={t.editor.more} onClick={more} />
      {program &&
        (busy ? (
          <IconButton icon="stop" label={t.console.stop} onClick={() => app.console.stop()} />
        ) : (
          <IconButton icon="run" label={t.editor.run} on onClick={() => void runAndLook(app, file.path, view())} />
        ))}
    </>
  );
}

function Field({ app, path, view }: { app: App; path: string; view: { current: EditorView | null } }) {
  const { editor } = app;
  const parent = useRef<HTMLDivElement>(null);
  const generation = useSignal(0);
  const suggestions = useRef(
    new Suggestions(
      (text, position) => app.console.complete(text, position),
      ({ state }) => {
        const line = state.doc.lineAt(state.selection.main.head);
        return [line.text, line.from];
      },
    ),
  ).current;

  useEffect(() => {
    const field = new TypingView({ parent: parent.current! });
    view.current = field;
    generation.value++;
    return () => {
      const shown = shownPath.current;
      if (shown) keepState(shown, field.state);
      view.current = null;
      field.destroy();
    };
  }, []);

  const shownPath = useRef<string | null>(null);
  useEffect(() => {
    const field = view.current!;
    const file = editor.files.value.find((each) => each.path === path);
    if (!file) return;
    if (shownPath.current && shownPath.current !== path) keepState(shownPath.current, field.state);
    const shown = field.state.doc.toString();
    if (shownPath.current === path) field.dispatch({ changes: changeTo(shown, file.text) });
    else {
      field.setState(makeState(app, path, file.text, suggestions));
      setOwnKeyboard(field, ownKeyboardWanted(app));
    }
    shownPath.current = path;
    field.dispatch({ effects: setMarks.of(file.marks) });
  }, [path, editor.replaced.value, editor.active.value?.marks, generation.value]);

  useSignalEffect(() => {
    const own = ownKeyboardWanted(app);
    if (view.current) setOwnKeyboard(view.current, own);
  });
  useEffect(() => {
    const goto = editor.goto.value;
    const field = view.current;
    if (!goto || !field || goto.path !== path || shownPath.current !== path) return;
    editor.goto.value = null;
    const line = field.state.doc.line(Math.min(goto.line, field.state.doc.lines));
    const at = Math.min(line.from + goto.column - 1, line.to);
    field.dispatch({ selection: { anchor: at }, effects: EditorView.scrollIntoView(at, { y: 'center' }) });
    field.focus();
  });
  editor.goto.value;

  return (
    <>
      <div class="code file-field" ref={parent} />
      <SuggestionStrip suggestions={suggestions} view={() => view.current} />
    </>
  );
}

function NoFile({ app }: { app: App }) {
  const create = async () => {
    const path = await app.files.newFile();
    if (path) await app.openFile(path);
  };
  return (
    <Empty title={t.editor.emptyTitle} text={t.editor.emptyText}>
      <div class="button-row">
        <button type="button" class="button primary" onClick={() => void create()}>
          {t.editor.newFile}
        </button>
        {!app.layout.isShown('files') && (
          <button type="button" class="button" onClick={() => app.layout.show('files')}>
            {t.editor.openFiles}
          </button>
        )}
      </div>
    </Empty>
  );
}
