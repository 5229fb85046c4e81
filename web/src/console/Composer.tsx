/// The input of the console: coloured text of several lines, and the buttons that belong to it.

import { useEffect, useRef } from 'preact/hooks';
import { effect, useSignalEffect } from '@preact/signals';
import { Compartment, EditorState, Prec } from '@codemirror/state';
import { EditorView, keymap, placeholder } from '@codemirror/view';
import type { RunStatus } from '../engine/core/protocol';
import type { App } from '../shell/core/app';
import { windowStore } from '../shell/device';
import { codeExtensions, replaceAll, setOwnKeyboard, targetOf } from '../code/codeField';
import { breakLineAt, type Indenter, indentationSettled, mendWhileTyping, newLine } from '../code/indent';
import { Suggestions } from '../code/suggestions';
import { SuggestionStrip } from '../code/SuggestionStrip';
import { TypingView } from '../code/typingView';
import { isTouch, ownKeyboardWanted } from '../code/useOwnKeyboard';
import { Icon } from '../design/icons';
import { type FirstText, takeFirstField } from '../first/firstField';
import { IconButton, keepFocus } from '../design/widgets';
import { text as t } from '../texts/texts';

/// What stands in the input, kept while the panel is out of view and over a reload.
let draft = windowStore.read('command') ?? '';
addEventListener('pagehide', () => windowStore.write('command', draft));

const hint = new Compartment();
const kHints: Record<RunStatus, string> = {
  idle: t.console.placeholder,
  running: t.console.placeholder,
  paused: t.console.pausedPlaceholder,
  waitInput: t.console.answerPlaceholder,
};
const hintOf = (status: RunStatus) => placeholder(kHints[status]);

export interface ComposerHandle {
  use(text: string): void;
  focus(): void;
}

/// Return runs a whole command and breaks the line of one that is not. What was typed on while the
/// engine was asked stays behind the Return.
async function enterBySense(app: App, view: EditorView, run: () => void, indenter: Indenter) {
  const { doc, selection } = view.state;
  const text = doc.toString();
  const { head } = selection.main;
  const complete = await app.console.isComplete(text);
  if (view.state.doc === doc) {
    if (complete) run();
    else newLine(indenter)(view);
  } else if (!complete) {
    breakLineAt(view, indenter, head);
  } else if (head === text.length && app.console.run(text)) {
    view.dispatch({ changes: { from: 0, to: Math.min(text.length, view.state.doc.length) } });
  }
}

interface Fields {
  view: EditorView;
  enter(view: EditorView): boolean;
}

function makeView(app: App, parent: HTMLElement, suggestions: Suggestions, run: () => void): Fields {
  const indenter = async (text: string, position: number) =>
    (await app.session.request('editor/indentedLine', { text, position })).line;
  const breakLine = newLine(indenter);
  let entering = Promise.resolve();
  const enter = (view: EditorView): boolean => {
    if (app.console.status.value === 'waitInput') {
      run();
      return true;
    }
    if (!app.preferences.value.value.enterRuns) return breakLine(view);
    entering = entering.then(() => indentationSettled(view)).then(() => enterBySense(app, view, run, indenter));
    return true;
  };
  const recall = (text: string | null, view: EditorView) => {
    if (text !== null) replaceAll(view, text);
    return text !== null;
  };
  const onFirstLine = ({ state }: EditorView) => state.doc.lineAt(state.selection.main.head).number === 1;
  const onLastLine = ({ state }: EditorView) => state.doc.lineAt(state.selection.main.head).number === state.doc.lines;
  const keys = Prec.high(
    keymap.of([
      { key: 'Enter', run: enter },
      { key: 'Shift-Enter', run: breakLine },
      {
        key: 'Mod-Enter',
        run: () => {
          run();
          return true;
        },
      },
      {
        key: 'Mod-l',
        run: () => {
          app.console.clear();
          return true;
        },
      },
      { key: 'Tab', run: suggestions.tab },
      {
        key: 'Escape',
        run: () => {
          suggestions.clear();
          return false;
        },
      },
      {
        key: 'ArrowUp',
        run: (view) => onFirstLine(view) && recall(app.console.previous(view.state.doc.toString()), view),
      },
      { key: 'ArrowDown', run: (view) => onLastLine(view) && recall(app.console.next(), view) },
    ]),
  );
  const view: EditorView = new TypingView({
    parent,
    state: EditorState.create({
      doc: draft,
      extensions: [
        codeExtensions(app, {
          label: t.console.input,
          ownKeyboard: ownKeyboardWanted(app),
          keys,
          extra: [hint.of(hintOf(app.console.status.peek())), suggestions.extension(), mendWhileTyping(indenter)],
        }),
        EditorView.updateListener.of((update) => {
          if (update.docChanged) draft = update.state.doc.toString();
        }),
        EditorView.domEventHandlers({
          focus: () => {
            app.keyboard.target.value = targetOf(view, () => enter(view));
          },
        }),
      ],
    }),
  });
  return { view, enter };
}

/// Goes on with what was typed into the page's first field; a Return at its end runs it, as soon as
/// the engine is there.
function goOn(app: App, { view, enter }: Fields, given: FirstText | null): void {
  if (!given) {
    if (!isTouch.peek()) view.focus();
    return;
  }
  const entered = given.text.endsWith('\n') && app.preferences.value.peek().enterRuns;
  const text = entered ? given.text.slice(0, -1) : given.text;
  const within = (at: number) => Math.min(at, text.length);
  if (text) {
    view.dispatch({
      changes: { from: 0, to: view.state.doc.length, insert: text },
      selection: { anchor: within(given.anchor), head: within(given.head) },
    });
  }
  if (given.focused) view.focus();
  if (!entered || !text.trim()) return;
  const stop = effect(() => {
    if (app.session.state.value !== 'open') return;
    queueMicrotask(() => {
      stop();
      enter(view);
    });
  });
}

export function Composer({ app, handle }: { app: App; handle: { current: ComposerHandle | null } }) {
  const { console } = app;
  const parent = useRef<HTMLDivElement>(null);
  const view = useRef<EditorView | null>(null);
  const suggestions = useRef(
    new Suggestions(
      (text, position) => console.complete(text, position),
      (field) => [field.state.doc.toString(), 0],
    ),
  ).current;
  const run = () => {
    const field = view.current;
    if (!field) return;
    suggestions.clear();
    if (console.run(field.state.doc.toString())) replaceAll(field, '');
  };
  useEffect(() => {
    takeFirstField((given) => {
      if (!parent.current) return;
      const fields = makeView(app, parent.current, suggestions, run);
      const field = (view.current = fields.view);
      handle.current = {
        use: (text) => {
          replaceAll(field, text);
          field.focus();
        },
        focus: () => field.focus(),
      };
      goOn(app, fields, given);
    });
    return () => {
      handle.current = null;
      view.current?.destroy();
      view.current = null;
    };
  }, []);
  useSignalEffect(() => {
    const own = ownKeyboardWanted(app);
    if (view.current) setOwnKeyboard(view.current, own);
  });

  useSignalEffect(() => {
    const effects = hint.reconfigure(hintOf(console.status.value));
    view.current?.dispatch({ effects });
  });

  console.historyVersion.value;
  const status = console.status.value;
  const recall = (text: string | null) => {
    if (text !== null && view.current) replaceAll(view.current, text);
  };
  return (
    <div class={`composer ${status}`}>
      {console.prompt.value && (
        <p class="prompt" id="prompt">
          {console.prompt.value}
        </p>
      )}
      <SuggestionStrip suggestions={suggestions} view={() => view.current} />
      <div class="composer-row">
        <span class="composer-mark" aria-hidden="true" />
        <div class="code composer-field" ref={parent} />
        <div class="composer-actions" onPointerDown={keepFocus}>
          <IconButton
            icon="up"
            label={t.console.previous}
            disabled={!console.history.hasPrevious}
            onClick={() => recall(console.previous(view.current?.state.doc.toString() ?? ''))}
          />
          <IconButton
            icon="down"
            label={t.console.next}
            disabled={!console.history.hasNext}
            onClick={() => recall(console.next())}
          />
          <RunButton app={app} run={run} />
        </div>
      </div>
    </div>
  );
}

function RunButton({ app, run }: { app: App; run(): void }) {
  const status = app.console.status.value;
  if (status === 'running') {
    return (
      <button type="button" class="button danger run-button" onClick={() => app.console.stop()}>
        <Icon name="stop" />
        {t.console.stop}
      </button>
    );
  }
  const label = { idle: t.console.run, paused: t.console.goOn, waitInput: t.console.answer }[status];
  return (
    <>
      {status !== 'idle' && <IconButton icon="stop" label={t.console.stop} onClick={() => app.console.stop()} />}
      <button type="button" class="button primary run-button" onClick={run}>
        <Icon name="run" />
        {label}
      </button>
    </>
  );
}
