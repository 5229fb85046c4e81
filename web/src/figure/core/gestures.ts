/// Touches, wheel and drags become the gestures of the engine. Moves of fingers come in as points;
/// what goes out is the difference since the last call. Nothing here names an event of a page.

export type PendingGesture =
  | { kind: 'pan' | 'rotate'; dx: number; dy: number }
  | { kind: 'pinch'; x: number; y: number; scaleX: number; scaleY: number }
  | { kind: 'zoom'; scale: number }
  | { kind: 'reset' };

export interface Point {
  x: number;
  y: number;
}

/// Adds a gesture to those that wait; the last of the same kind takes it up. Two fingers pan and pinch
/// by turns, so a pinch in between does not keep two pans apart.
export function mergeGesture(waiting: PendingGesture[], next: PendingGesture): PendingGesture[] {
  if (next.kind === 'reset') return [next];
  const at = waiting.map(({ kind }) => kind).lastIndexOf(next.kind);
  const between = waiting.slice(at + 1);
  if (at < 0 || !between.every(({ kind }) => kind === 'pan' || kind === 'pinch')) return [...waiting, next];
  return [...waiting.slice(0, at), combined(waiting[at]!, next), ...between];
}

function combined(a: PendingGesture, b: PendingGesture): PendingGesture {
  if ((a.kind === 'pan' || a.kind === 'rotate') && a.kind === b.kind) return { ...a, dx: a.dx + b.dx, dy: a.dy + b.dy };
  if (a.kind === 'pinch' && b.kind === 'pinch') {
    return { ...b, scaleX: a.scaleX * b.scaleX, scaleY: a.scaleY * b.scaleY };
  }
  if (a.kind === 'zoom' && b.kind === 'zoom') return { kind: 'zoom', scale: a.scale * b.scale };
  return b;
}

const kLargestStep = 4;
const kSmallestSpread = 24;
const bounded = (scale: number) => Math.min(kLargestStep, Math.max(1 / kLargestStep, scale));

/// The fingers on a figure. Two fingers pinch and pan a plot, along the axis on which they lie; of a
/// surface one finger turns, two zoom.
export class Fingers {
  private readonly points = new Map<number, Point>();

  constructor(private readonly kind: () => 'plot' | 'surface') {}

  get count(): number {
    return this.points.size;
  }
  down(id: number, at: Point): void {
    this.points.set(id, at);
  }
  up(id: number): void {
    this.points.delete(id);
  }
  clear(): void {
    this.points.clear();
  }

  move(id: number, to: Point): PendingGesture[] {
    const from = this.points.get(id);
    if (!from) return [];
    const other = [...this.points].find(([key]) => key !== id)?.[1];
    this.points.set(id, to);
    if (this.points.size > 2) return [];
    const dx = to.x - from.x;
    const dy = to.y - from.y;
    const surface = this.kind() === 'surface';
    if (!other) return [{ kind: surface ? 'rotate' : 'pan', dx, dy }];
    if (surface) return [{ kind: 'zoom', scale: bounded(distance(to, other) / Math.max(1, distance(from, other))) }];
    return [{ kind: 'pan', dx: dx / 2, dy: dy / 2 }, pinch(from, to, other)];
  }
}

function pinch(from: Point, to: Point, other: Point): PendingGesture {
  const scale = (a: number, b: number, still: number) => {
    const before = Math.abs(a - still);
    return before < kSmallestSpread ? 1 : bounded(Math.abs(b - still) / before);
  };
  return {
    kind: 'pinch',
    x: (to.x + other.x) / 2,
    y: (to.y + other.y) / 2,
    scaleX: scale(from.x, to.x, other.x),
    scaleY: scale(from.y, to.y, other.y),
  };
}

const distance = (a: Point, b: Point) => Math.hypot(a.x - b.x, a.y - b.y);

/// The gesture of a turn of the wheel at a place.
export function wheelGesture(kind: 'plot' | 'surface', at: Point, delta: number): PendingGesture {
  const scale = bounded(Math.exp(-delta / 300));
  return kind === 'surface' ? { kind: 'zoom', scale } : { kind: 'pinch', ...at, scaleX: scale, scaleY: scale };
}
