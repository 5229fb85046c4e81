/// The common part of every field of program text.

import { closeBrackets, closeBracketsKeymap } from '@codemirror/autocomplete';
import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { bracketMatching, indentUnit } from '@codemirror/language';
import { Compartment, EditorState, type Extension, Transaction } from '@codemirror/state';
import { EditorView, keymap } from '@codemirror/view';
import type { Span } from '../engine/core/protocol';
import type { App } from '../shell/core/app';
import type { TextTarget } from '../keyboard/core/keyboard';
import { hangingRows } from './hanging';
import { engineColors } from './highlight';
import { TypingView } from './typingView';

const inputMode = new Compartment();
const attributesFor = (ownKeyboard: boolean) =>
  EditorView.contentAttributes.of(ownKeyboard ? { inputmode: 'none' } : { inputmode: 'text' });

/// Typing into a field that shows all of its text scrolls nothing; else each key would have the page
/// measured twice.
const typeInPlace = EditorView.inputHandler.of((view, _from, _to, _text, insert) => {
  const { scrollHeight, clientHeight } = view.scrollDOM;
  if (scrollHeight > clientHeight) return false;
  const typed = insert();
  const userEvent = typed.annotation(Transaction.userEvent);
  view.dispatch({ changes: typed.changes, selection: typed.newSelection, userEvent });
  return true;
});

export interface CodeFieldOptions {
  label: string;
  ownKeyboard: boolean;
  keys: Extension;
  extra?: Extension;
}

export function codeExtensions(app: App, options: CodeFieldOptions): Extension {
  const highlight = async (text: string): Promise<Span[]> =>
    (await app.session.request('editor/highlight', { text })).spans;
  return [
    options.keys,
    history(),
    closeBrackets(),
    bracketMatching({ brackets: '()[]{}' }),
    indentUnit.of('    '),
    EditorState.tabSize.of(4),
    EditorState.languageData.of(() => [{ closeBrackets: { brackets: ['(', '[', '{'] } }]),
    keymap.of([...closeBracketsKeymap, ...defaultKeymap, ...historyKeymap]),
    EditorView.lineWrapping,
    hangingRows,
    inputMode.of(attributesFor(options.ownKeyboard)),
    EditorView.contentAttributes.of({
      'aria-label': options.label,
      autocapitalize: 'off',
      autocorrect: 'off',
      spellcheck: 'false',
      tabindex: '0',
    }),
    engineColors(highlight),
    typeInPlace,
    options.extra ?? [],
  ];
}

/// Whether the system's keyboard rises at a focus of the field.
export function setOwnKeyboard(view: EditorView, own: boolean): void {
  if ((view.contentDOM.inputMode === 'none') === own) return;
  view.dispatch({ effects: inputMode.reconfigure(attributesFor(own)) });
}

/// The field as the on-screen keyboard sees it. Writes go by transactions, as typing does.
export function targetOf(view: EditorView, enter: () => void): TextTarget {
  const measureLater = () => view instanceof TypingView && view.measureLater();
  return {
    insert(text) {
      measureLater();
      const { from, to } = view.state.selection.main;
      for (const handler of view.state.facet(EditorView.inputHandler)) {
        const insert = () => view.state.update(view.state.replaceSelection(text), { userEvent: 'input.type' });
        if (handler(view, from, to, text, insert)) return;
      }
      view.dispatch(view.state.replaceSelection(text), { userEvent: 'input.type', scrollIntoView: true });
    },
    deleteBackward() {
      const { from, to, empty } = view.state.selection.main;
      const line = view.state.doc.lineAt(from);
      const start = empty ? Math.max(0, previousPosition(line.text, from - line.from) + line.from) : from;
      if (start === to) return;
      view.dispatch({ changes: { from: start, to }, userEvent: 'delete.backward', scrollIntoView: true });
    },
    enter,
    moveCaret(by) {
      const at = Math.max(0, Math.min(view.state.doc.length, view.state.selection.main.head + by));
      view.dispatch({ selection: { anchor: at }, scrollIntoView: true });
    },
  };
}

/// Where the character before the column begins: a pair of units and the line end count as one.
function previousPosition(line: string, column: number): number {
  if (column === 0) return -1;
  const unit = line.charCodeAt(column - 1);
  return column - (unit >= 0xdc00 && unit < 0xe000 && column > 1 ? 2 : 1);
}

export function replaceAll(view: EditorView, text: string): void {
  view.dispatch({
    changes: { from: 0, to: view.state.doc.length, insert: text },
    selection: { anchor: text.length },
    scrollIntoView: true,
  });
}
