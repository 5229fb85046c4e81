/// The editor's field for one file: keys, marks of errors in the margin, and the states of files
/// that are open but not shown, so that undo and the caret survive a change of tab.

import { history, redo, undo } from '@codemirror/commands';
import { highlightSelectionMatches } from '@codemirror/search';
import { type ChangeSpec, EditorState, Prec, RangeSet, StateEffect, StateField } from '@codemirror/state';
import {
  EditorView,
  GutterMarker,
  gutter,
  highlightActiveLine,
  highlightActiveLineGutter,
  keymap,
  lineNumbers,
} from '@codemirror/view';
import type { App } from '../shell/core/app';
import { codeExtensions, targetOf } from '../code/codeField';
import { mendWhileTyping, newLine } from '../code/indent';
import type { Suggestions } from '../code/suggestions';
import { ownKeyboardWanted } from '../code/useOwnKeyboard';
import { text as t } from '../texts/texts';
import { isProgram, type Mark } from './core/editor';

const kept = new Map<string, EditorState>();
export const keepState = (path: string, state: EditorState) => {
  kept.set(path, state);
};
export const dropState = (path: string) => {
  kept.delete(path);
};

class MarkSign extends GutterMarker {
  constructor(private readonly mark: Mark) {
    super();
  }
  override toDOM(): HTMLElement {
    const sign = document.createElement('span');
    sign.className = this.mark.warning ? 'mark-sign warning' : 'mark-sign';
    sign.title = this.mark.text;
    sign.setAttribute('role', 'img');
    sign.setAttribute('aria-label', this.mark.text);
    return sign;
  }
}

/// One mark for each line, with the texts of all.
function oneEach(marks: Mark[]): Mark[] {
  const lines = new Map<number, Mark>();
  for (const mark of marks) {
    const other = lines.get(mark.line);
    const text = other ? `${other.text}\n${mark.text}` : mark.text;
    lines.set(mark.line, { ...mark, text, warning: mark.warning && other?.warning !== false });
  }
  return [...lines.values()];
}

export const setMarks = StateEffect.define<Mark[]>();
const marksField = StateField.define<RangeSet<GutterMarker>>({
  create: () => RangeSet.empty,
  update(signs, transaction) {
    signs = signs.map(transaction.changes);
    for (const effect of transaction.effects) {
      if (!effect.is(setMarks)) continue;
      const { doc } = transaction.state;
      const shown = effect.value.filter((mark) => mark.line >= 1 && mark.line <= doc.lines);
      signs = RangeSet.of(
        oneEach(shown).map((mark) => new MarkSign(mark).range(doc.line(mark.line).from)),
        true,
      );
    }
    return signs;
  },
});
const marksGutter = [marksField, gutter({ class: 'cm-marks', markers: (view) => view.state.field(marksField) })];

/// The one change that makes the other text of the old one, so that the caret and the undo stay.
export function changeTo(old: string, text: string): ChangeSpec {
  let from = 0;
  let end = old.length;
  let newEnd = text.length;
  while (from < end && from < newEnd && old[from] === text[from]) from++;
  while (end > from && newEnd > from && old[end - 1] === text[newEnd - 1]) {
    end--;
    newEnd--;
  }
  return { from, to: end, insert: text.slice(from, newEnd) };
}

type Edit = 'editor/comment' | 'editor/uncomment' | 'editor/indent';

/// Has the engine change the selected lines, as one step of undo.
export async function editLines(app: App, view: EditorView, method: Edit): Promise<void> {
  const { doc, selection } = view.state;
  const old = doc.toString();
  const answer = await app.dialogs.guard(() =>
    app.session.request(method, {
      text: old,
      start: selection.main.from,
      end: selection.main.to,
    }),
  );
  if (!answer || view.state.doc !== doc) return;
  view.dispatch({
    changes: changeTo(old, answer.text),
    selection: { anchor: answer.start, head: answer.end },
    userEvent: 'input',
    scrollIntoView: true,
  });
}

/// The selected text, or the line of the caret.
export function selectedText(state: EditorState): string {
  const { from, to, empty, head } = state.selection.main;
  return empty ? state.doc.lineAt(head).text : state.doc.sliceString(from, to);
}

export function nameAtCaret(state: EditorState): string | null {
  const range = state.wordAt(state.selection.main.head);
  return range ? state.doc.sliceString(range.from, range.to) : null;
}

/// Runs the file. Where the keyboard has taken the console's room, it is put away to show what comes.
export async function runAndLook(app: App, path: string, view: EditorView | null): Promise<void> {
  if (app.layout.mode.value === 'lying') view?.contentDOM.blur();
  await app.runFile(path);
}

export async function openSearch(view: EditorView): Promise<void> {
  const { showSearch } = await import('./search');
  showSearch(view);
}

export function makeState(app: App, path: string, text: string, suggestions: Suggestions): EditorState {
  const old = kept.get(path);
  if (old && old.doc.toString() === text) return old;
  const indenter = async (all: string, position: number) =>
    (await app.session.request('editor/indentedLine', { text: all, position })).line;
  const does = (work: (view: EditorView) => unknown) => (view: EditorView) => {
    void work(view);
    return true;
  };
  const enter = isProgram(path) ? newLine(indenter) : newLine(async () => '');
  const keys = Prec.high(
    keymap.of([
      { key: 'Mod-s', run: does(() => app.editor.save(path)) },
      { key: 'Mod-Enter', run: does((view) => runAndLook(app, path, view)) },
      { key: 'Shift-Mod-Enter', run: does((view) => app.runText(selectedText(view.state))) },
      { key: 'Mod-/', run: does((view) => editLines(app, view, 'editor/comment')) },
      { key: 'Shift-Mod-/', run: does((view) => editLines(app, view, 'editor/uncomment')) },
      { key: 'Mod-i', run: does((view) => editLines(app, view, 'editor/indent')) },
      { key: 'Mod-f', run: does(openSearch) },
      {
        key: 'F1',
        run: does((view) => {
          const name = nameAtCaret(view.state);
          if (name) return app.showHelpOn(name);
          return undefined;
        }),
      },
      { key: 'Tab', run: suggestions.tab },
      {
        key: 'Escape',
        run: () => {
          suggestions.clear();
          return false;
        },
      },
      { key: 'Enter', run: enter },
    ]),
  );
  return EditorState.create({
    doc: text,
    extensions: [
      history(),
      EditorState.phrases.of(t.editor.phrases),
      codeExtensions(app, {
        label: t.editor.program,
        ownKeyboard: ownKeyboardWanted(app),
        keys,
        extra: [
          marksGutter,
          lineNumbers(),
          highlightActiveLine(),
          highlightActiveLineGutter(),
          highlightSelectionMatches(),
          isProgram(path) ? [suggestions.extension(), mendWhileTyping(indenter)] : [],
        ],
      }),
      EditorView.updateListener.of((update) => {
        if (update.docChanged) app.editor.changed(path, update.state.doc.toString());
      }),
      EditorView.domEventHandlers({
        focus: (_, view) => {
          app.keyboard.target.value = targetOf(view, () => enter(view));
        },
      }),
    ],
  });
}

export { redo, undo };
