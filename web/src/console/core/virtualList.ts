/// Which rows of a long list lie in view. Heights are estimated when a row is added and corrected
/// when it was measured; positions are prefix sums, recomputed from the first row that changed.

export interface Window {
  first: number;
  end: number;
  before: number;
  total: number;
}

export class VirtualList {
  private heights: number[] = [];
  private tops: number[] = [0];
  private valid = 0; // Invariant: tops[0..valid] are right

  get length(): number {
    return this.heights.length;
  }

  push(height: number): void {
    this.heights.push(height);
  }

  setHeight(row: number, height: number): boolean {
    if (this.heights[row] === height) return false;
    this.heights[row] = height;
    this.valid = Math.min(this.valid, row);
    return true;
  }

  height(row: number): number {
    return this.heights[row] ?? 0;
  }

  reset(heights: number[]): void {
    this.heights = heights;
    this.tops = [0];
    this.valid = 0;
  }

  top(row: number): number {
    for (; this.valid < row; this.valid++)
      this.tops[this.valid + 1] = this.tops[this.valid]! + this.heights[this.valid]!;
    return this.tops[row]!;
  }

  get total(): number {
    return this.top(this.length);
  }

  /// The row at the offset: the last one whose top is not below it.
  rowAt(offset: number): number {
    const total = this.total;
    if (offset >= total) return Math.max(0, this.length - 1);
    let low = 0;
    let high = this.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.tops[middle]! <= offset) low = middle;
      else high = middle - 1;
    }
    return low;
  }

  /// Rows to draw for a view of `height` scrolled to `offset`, with `margin` more on both sides.
  window(offset: number, height: number, margin: number): Window {
    if (this.length === 0) return { first: 0, end: 0, before: 0, total: 0 };
    const first = this.rowAt(Math.max(0, offset - margin));
    const end = this.rowAt(offset + height + margin) + 1;
    return { first, end, before: this.top(first), total: this.total };
  }
}
