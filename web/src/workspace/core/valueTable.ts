/// Reads the text by which the console shows a matrix back into a table of cells, so that it can be
/// looked at as a sheet. A text of another shape (pages, structures, texts) gives null and is shown
/// as it is.

export interface ValueTable {
  scale: string;
  rows: string[][];
}

const kColumns = /^\s*Columns? \d+/;

export function parseTable(text: string, numRows: number, numCols: number): ValueTable | null {
  const lines = text.split('\n');
  if (/^\s*\S+ = ?/.test(lines[0] ?? '')) lines[0] = lines[0]!.replace(/^\s*\S+ = ?/, '');
  const rows: string[][] = Array.from({ length: numRows }, () => []);
  let scale = '';
  let row = 0;
  for (const line of lines) {
    const content = line.trim();
    if (!content) continue;
    if (kColumns.test(content)) {
      row = 0;
      continue;
    }
    const factor = /^(1(?:\.0+)?e[-+]?\d+) ?\*$/i.exec(content);
    if (factor) {
      if (scale && scale !== factor[1]) return null;
      scale = factor[1]!;
      continue;
    }
    if (row >= numRows) {
      if (rows[0]!.length >= numCols) return null;
      row = 0;
    }
    rows[row++]!.push(...cellsOf(content));
  }
  return rows.every((cells) => cells.length === numCols) ? { scale, rows } : null;
}

/// Cells of a line: parted by blanks, the parts of a complex number taken together.
function cellsOf(line: string): string[] {
  const words = line.split(/\s+/);
  const cells: string[] = [];
  for (const word of words) {
    const last = cells.length - 1;
    if (last >= 0 && (/[-+]$/.test(cells[last]!) || word === '+' || word === '-')) cells[last] += word;
    else cells.push(word);
  }
  return cells;
}

/// An element as it is written when it is edited, with the factor that stands over all of them.
export function writtenOut(cell: string, scale: string): string {
  if (!scale || /^[-+]?(0|NaN|Inf)$/i.test(cell)) return cell;
  return /i$/.test(cell) ? `(${cell})*${scale}` : `${cell}*${scale}`;
}

/// The command that puts a text into one element; rows and columns count from 0.
export function assignment(name: string, row: number, column: number, value: string): string {
  return `${name}(${row + 1}, ${column + 1}) = ${value};`;
}
