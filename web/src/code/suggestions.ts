/// Suggestions for the name at the caret. They stand in a strip by the text field, under the finger;
/// Tab takes the first, and further Tabs go on to the next ones.

import { signal, type Signal } from '@preact/signals';
import { EditorView, type Command } from '@codemirror/view';
import type { Extension } from '@codemirror/state';
import type { Completion } from '../engine/core/protocol';
import type { Completions } from '../console/core/console';

export type Completer = (text: string, position: number) => Promise<Completions | null>;
const kDelay = 90;
const kLeast = 2;

export class Suggestions {
  readonly items: Signal<Completion[]> = signal([]);
  readonly chosen = signal(-1);
  private from = 0;
  private to = 0;
  private timer = 0;
  private asked = 0;

  constructor(
    private readonly completer: Completer,
    private readonly textAround: (view: EditorView) => [string, number],
  ) {}

  extension(): Extension {
    return EditorView.updateListener.of((update) => {
      if (update.focusChanged && !update.view.hasFocus) this.clear();
      if (update.docChanged && update.transactions.some((each) => each.isUserEvent('complete'))) return;
      if (!update.docChanged && !update.selectionSet) return;
      this.clear();
      if (update.docChanged) this.timer = window.setTimeout(() => void this.ask(update.view), kDelay);
    });
  }

  /// Tab: takes the first suggestion or, behind one just taken, the next.
  readonly tab: Command = (view) => {
    const { items } = this;
    if (items.value.length) {
      this.take(view, (this.chosen.value + 1) % items.value.length);
      return true;
    }
    const { head, empty } = view.state.selection.main;
    if (!empty || !/[\w.]$/.test(view.state.doc.lineAt(head).text.slice(0, head - view.state.doc.lineAt(head).from))) {
      return false;
    }
    void this.ask(view, 1).then(() => {
      if (items.value.length === 1) this.take(view, 0);
    });
    return true;
  };

  take(view: EditorView, at: number): void {
    const item = this.items.value[at];
    if (!item) return;
    view.dispatch({
      changes: { from: this.from, to: this.to, insert: item.label },
      selection: { anchor: this.from + item.label.length },
      userEvent: 'input.complete complete',
    });
    this.to = this.from + item.label.length;
    this.chosen.value = at;
  }

  clear(): void {
    window.clearTimeout(this.timer);
    this.asked++;
    this.chosen.value = -1;
    if (this.items.value.length) this.items.value = [];
  }

  private async ask(view: EditorView, least = kLeast): Promise<void> {
    const { head, empty } = view.state.selection.main;
    const line = view.state.doc.lineAt(head);
    const before = line.text.slice(0, head - line.from);
    const word = /[A-Za-z_][\w.]*$/.exec(before)?.[0] ?? '';
    if (!empty || (word.length < least && !word.endsWith('.')) || /^\w/.test(line.text.slice(head - line.from))) return;
    const mine = ++this.asked;
    const [text, offset] = this.textAround(view);
    const answer = await this.completer(text, head - offset);
    if (mine !== this.asked || !answer) return;
    const items = answer.items.slice(0, 40);
    const typed = text.slice(answer.from, head - offset);
    if (items.length === 1 && items[0]!.label === typed) return;
    this.from = answer.from + offset;
    this.to = head;
    this.items.value = items;
  }
}
