/// How the text of an item is cut and measured: lines wrapped at the cells of the panel, and very
/// long texts shown in part.

export const kFirstPart = 20000;
export const kMorePart = 200000;

/// Number of rows that the text takes when each line is broken after `cells` characters.
export function rowsOf(text: string, cells: number): number {
  let rows = 0;
  for (let start = 0; start <= text.length; ) {
    const newline = text.indexOf('\n', start);
    const end = newline < 0 ? text.length : newline;
    rows += Math.max(1, Math.ceil((end - start) / cells));
    start = end + 1;
  }
  return rows;
}

/// The first `limit` characters, cut behind a line end where one is near.
export function shownPart(text: string, limit: number): string {
  if (text.length <= limit) return text;
  const cut = text.lastIndexOf('\n', limit);
  return text.slice(0, cut > limit / 2 ? cut : limit);
}

export type ItemTone = 'input' | 'error' | 'warning' | 'output';

export function toneOf(item: { contentType: string; message?: { warning?: boolean } | null }): ItemTone {
  if (item.contentType === 'inputText') return 'input';
  if (item.contentType === 'error') return item.message?.warning ? 'warning' : 'error';
  return item.message?.warning ? 'warning' : 'output';
}
