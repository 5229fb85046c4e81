/// What the cores ask of their surroundings, so that they name no DOM and tests give their own.

export interface Clock {
  /// Milliseconds from some fixed moment.
  now(): number;
  /// Calls `work` once after the time; returns the way to call it off.
  after(milliseconds: number, work: () => void): () => void;
  /// Calls `work` before the next picture.
  nextFrame(work: () => void): void;
}

/// A small store of texts that outlives the page; writes that do not fit are refused with false.
export interface Store {
  read(key: string): string | null;
  write(key: string, text: string): boolean;
  remove(key: string): void;
}
