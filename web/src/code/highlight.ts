/// Colours from the engine for the lines in view. They are asked for behind the picture that shows
/// what was typed. Text that is changed keeps the colours it has until the answer comes; an answer for
/// an older text is carried over the changes made since.

import { type ChangeDesc, type Extension, RangeSetBuilder, StateEffect, StateField } from '@codemirror/state';
import { Decoration, type DecorationSet, EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';
import type { Span } from '../engine/core/protocol';
import { classOf, kColorClasses } from './colorClass';
import { behindPicture } from './typingView';

export type Highlighter = (text: string) => Promise<Span[]>;

const kLongest = 60_000;
const kMarks = new Map(kColorClasses.map((name) => [name, Decoration.mark({ class: name })]));

interface Painted {
  from: number;
  to: number;
  marks: DecorationSet;
}
const paint = StateEffect.define<Painted>();

const paintedField = StateField.define<DecorationSet>({
  create: () => Decoration.none,
  update(marks, transaction) {
    marks = marks.map(transaction.changes);
    for (const effect of transaction.effects) {
      if (!effect.is(paint)) continue;
      const { from, to } = effect.value;
      const fresh: ReturnType<Decoration['range']>[] = [];
      effect.value.marks.between(from, to, (start, end, value) => {
        fresh.push(value.range(start, end));
      });
      marks = marks.update({ filterFrom: from, filterTo: to, filter: () => false, add: fresh });
    }
    return marks;
  },
  provide: (field) => EditorView.decorations.from(field),
});

function marksOf(spans: Span[], offset: number): DecorationSet {
  const builder = new RangeSetBuilder<Decoration>();
  for (const { start, length, color } of spans) {
    const name = classOf(color);
    if (name && length > 0) builder.add(offset + start, offset + start + length, kMarks.get(name)!);
  }
  return builder.finish();
}

class Painter {
  private planned = false;
  private underWay = false;
  private again = true;
  private since: ChangeDesc | null = null;
  private stopped = false;

  constructor(
    private readonly view: EditorView,
    private readonly highlighter: Highlighter,
  ) {
    this.plan();
  }

  update(update: ViewUpdate): void {
    if (update.docChanged && this.underWay) {
      this.since = this.since ? this.since.composeDesc(update.changes.desc) : update.changes.desc;
    }
    if (update.docChanged || update.viewportChanged) {
      this.again = true;
      this.plan();
    }
  }

  destroy(): void {
    this.stopped = true;
  }

  private plan(): void {
    if (this.planned) return;
    this.planned = true;
    behindPicture(() => {
      this.planned = false;
      void this.run();
    });
  }

  private async run(): Promise<void> {
    if (this.underWay || !this.again || this.stopped) return;
    this.underWay = true;
    this.again = false;
    const { state, viewport } = this.view;
    const from = state.doc.lineAt(viewport.from).from;
    const to = state.doc.lineAt(viewport.to).to;
    try {
      if (to - from <= kLongest) this.show(from, to, await this.highlighter(state.doc.sliceString(from, to)));
    } catch {
      // without an answer the text keeps its colours
    } finally {
      this.underWay = false;
      this.since = null;
    }
    void this.run();
  }

  private show(from: number, to: number, spans: Span[]): void {
    if (this.stopped) return;
    let marks = marksOf(spans, from);
    if (this.since) {
      marks = marks.map(this.since);
      from = this.since.mapPos(from, -1);
      to = this.since.mapPos(to, 1);
    }
    this.view.dispatch({ effects: paint.of({ from, to: Math.min(to, this.view.state.doc.length), marks }) });
  }
}

export function engineColors(highlighter: Highlighter): Extension {
  return [paintedField, ViewPlugin.define((view) => new Painter(view, highlighter))];
}
