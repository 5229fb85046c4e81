/// The further rows of a line that is too long for the field stand under its first word, and a little
/// to the right. The widths are classes, since the page's policy refuses styles on elements.

import type { Extension } from '@codemirror/state';
import { Decoration, type DecorationSet, EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';

/// In characters. A deeper indentation would leave too little room on a phone.
const kMost = 18;
const kMore = 2;
const kWidths = Array.from({ length: kMost + 1 }, (_, width) => width);
const kLines = kWidths.map((width) => Decoration.line({ class: `hang-${width}` }));
const kStyles = EditorView.baseTheme(
  Object.fromEntries(kWidths.map((width) => [`.cm-line.hang-${width}`, { '--hang': `${width}ch` }])),
);

/// Of a line that begins with a tab the rows stand at the edge, since tabs are counted from there.
const widthOf = (text: string) => (text.startsWith('\t') ? 0 : Math.min(kMost, /^ */.exec(text)![0].length + kMore));

function linesInView({ state, visibleRanges }: EditorView): DecorationSet {
  const starts = new Map<number, Decoration>();
  for (const { from, to } of visibleRanges) {
    for (let at = from; at <= to; ) {
      const line = state.doc.lineAt(at);
      starts.set(line.from, kLines[widthOf(line.text)]!);
      at = line.to + 1;
    }
  }
  return Decoration.set(Array.from(starts, ([from, decoration]) => decoration.range(from)));
}

export const hangingRows: Extension = [
  kStyles,
  ViewPlugin.fromClass(
    class {
      lines: DecorationSet;
      constructor(view: EditorView) {
        this.lines = linesInView(view);
      }
      update(update: ViewUpdate): void {
        if (update.docChanged || update.viewportChanged) this.lines = linesInView(update.view);
      }
    },
    { decorations: ({ lines }) => lines },
  ),
];
