/// Indentation by the engine: of the new line behind a Return, and of a line on which a word that
/// closes or parts a block has just been typed.

import type { Extension } from '@codemirror/state';
import { EditorView, type Command } from '@codemirror/view';

export type Indenter = (text: string, position: number) => Promise<string>;

const kParting = /^\s*(end|else|elseif|case|otherwise)\s?$/;

/// Sets the indentation of the line at the caret as the engine would have it.
async function mendLine(view: EditorView, indenter: Indenter): Promise<void> {
  const { doc, selection } = view.state;
  const position = selection.main.head;
  let line: string;
  try {
    line = await indenter(doc.toString(), position);
  } catch {
    return;
  }
  if (view.state.doc !== doc) return; // typed on meanwhile: the next line end asks again
  const old = doc.lineAt(position);
  const blanks = (text: string) => /^[ \t]*/.exec(text)![0].length;
  if (line === old.text || line.trimStart() !== old.text.trimStart()) return;
  const [before, after] = [blanks(old.text), blanks(line)];
  view.dispatch({
    changes: { from: old.from, to: old.from + before, insert: line.slice(0, after) },
    selection: { anchor: Math.max(old.from + after, position + after - before) },
    userEvent: 'input.indent',
  });
}

const mending = new WeakMap<EditorView, Promise<unknown>>();

function mend(view: EditorView, indenter: Indenter): void {
  mending.set(view, Promise.all([mending.get(view), mendLine(view, indenter)]));
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

export function mendWhileTyping(indenter: Indenter): Extension {
  return EditorView.updateListener.of((update) => {
    if (!update.docChanged || !update.transactions.some((each) => each.isUserEvent('input.type'))) return;
    const line = update.state.doc.lineAt(update.state.selection.main.head);
    if (kParting.test(line.text)) mend(update.view, indenter);
  });
}
