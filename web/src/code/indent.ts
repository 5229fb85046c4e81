/// Indentation by the engine: of the new line behind a Return, and of a line on which a word that
/// closes or parts a block has just been typed.

import type { Extension } from '@codemirror/state';
import { EditorView, type Command } from '@codemirror/view';

export type Indenter = (text: string, position: number) => Promise<string>;

const kParting = /^\s*(end|else|elseif|case|otherwise)\s?$/;

const blanks = (text: string) => /^[ \t]*/.exec(text)![0].length;

const kTries = 5;

/// Sets the indentation of a line as the engine would have it. What is typed on behind it meanwhile
/// does no harm; a line that was changed otherwise is asked about again.
async function mendLine(view: EditorView, indenter: Indenter, number: number, tries = kTries): Promise<void> {
  const { doc } = view.state;
  if (number > doc.lines || tries === 0) return;
  const old = doc.line(number);
  let wanted: string;
  try {
    wanted = await indenter(doc.toString(), old.to);
  } catch {
    return;
  }
  const [before, after] = [blanks(old.text), blanks(wanted)];
  const now = number <= view.state.doc.lines ? view.state.doc.line(number) : null;
  if (!now?.text.startsWith(old.text) || blanks(now.text) !== before) {
    return mendLine(view, indenter, number, tries - 1);
  }
  if (before === after || wanted.trimStart() !== old.text.trimStart()) return;
  const moved = (at: number) => (at < now.from ? at : Math.max(now.from + after, at + after - before));
  const { anchor, head } = view.state.selection.main;
  view.dispatch({
    changes: { from: now.from, to: now.from + before, insert: wanted.slice(0, after) },
    selection: { anchor: moved(anchor), head: moved(head) },
    userEvent: 'input.indent',
  });
}

const lineOf = (view: EditorView, position: number) => view.state.doc.lineAt(position).number;
const mending = new WeakMap<EditorView, Promise<unknown>>();

/// The line at the caret, or the one of the number.
function mend(view: EditorView, indenter: Indenter, number = lineOf(view, view.state.selection.main.head)): void {
  mending.set(view, Promise.all([mending.get(view), mendLine(view, indenter, number)]));
}

/// When the engine has answered for every line that is being mended, so that what is run is what is seen.
export async function indentationSettled(view: EditorView): Promise<void> {
  await mending.get(view);
}

export function newLine(indenter: Indenter): Command {
  return (view) => {
    view.dispatch(view.state.replaceSelection('\n'), { scrollIntoView: true, userEvent: 'input' });
    mend(view, indenter);
    return true;
  };
}

/// Breaks the line at a place that the caret has left.
export function breakLineAt(view: EditorView, indenter: Indenter, position: number): void {
  view.dispatch({ changes: { from: position, insert: '\n' }, userEvent: 'input' });
  mend(view, indenter, lineOf(view, position) + 1);
}

export function mendWhileTyping(indenter: Indenter): Extension {
  return EditorView.updateListener.of((update) => {
    if (!update.docChanged || !update.transactions.some((each) => each.isUserEvent('input.type'))) return;
    const line = update.state.doc.lineAt(update.state.selection.main.head);
    if (kParting.test(line.text)) mend(update.view, indenter);
  });
}
