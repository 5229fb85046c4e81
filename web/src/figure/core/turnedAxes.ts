/// The axes of a surface while it is turned: the edges of the box along which the engine would draw
/// them, and the texts of its last drawing at their places along those edges.

import type { Drawing, DrawingItem } from '../../engine/core/protocol';
import type { Point } from './gestures';

export type Axis = 0 | 1 | 2;
export const kAxes: Axis[] = [0, 1, 2];
const kNames = ['x', 'y', 'z'];
/// Shorter axes are left out, in points.
const kShortest = 20;
/// Half of a capital's height, as a part of the size of its text.
const kHalfCapital = 0.36;

/// On the screen, from the lower to the upper limit; `outward` has length 1 and leads off the box.
export interface Edge {
  lower: Point;
  upper: Point;
  outward: Point;
}

/// A text of an axis: its place along it, from 0 to 1, and whether it is the axis's own label.
export interface AxisText {
  item: DrawingItem;
  share: number;
  isLabel: boolean;
}
export interface AxisTexts {
  line: DrawingItem;
  texts: AxisText[];
}

export const at = ({ lower, upper }: Edge, share: number): Point => ({
  x: lower.x + (upper.x - lower.x) * share,
  y: lower.y + (upper.y - lower.y) * share,
});

/// How far the middle of a text stands behind its baseline.
export const rise = ({ size = 12, angle }: DrawingItem): Point =>
  angle ? { x: kHalfCapital * size, y: 0 } : { x: 0, y: kHalfCapital * size };

/// The texts of each axis in a drawing; null for an axis that is not drawn there.
export function axisTexts({ items }: Drawing): (AxisTexts | null)[] {
  return kNames.map((name) => {
    const line = items.find(({ role }) => role === `${name} axis`);
    if (!line?.points) return null;
    const [x0, y0, x1, y1] = line.points as [number, number, number, number];
    const [dx, dy] = [x1 - x0, y1 - y0];
    const texts = items
      .filter(({ kind, role }) => kind === 'text' && role.startsWith(`${name} `))
      .map((item) => {
        const { x, y } = rise(item);
        const along = (item.x! - x - x0) * dx + (item.y! - y - y0) * dy;
        return { item, share: along / (dx * dx + dy * dy || 1), isLabel: item.role !== `${name} tick label` };
      });
    return { line, texts };
  });
}

/// Of the four edges along an axis, those where a face that is seen meets one that is not make the
/// outline: x and y take the lowest of them on the screen, z the leftmost. `place` puts a corner of
/// the box, of sides -1 and 1, onto the screen; `facing` tells how much each axis leads to the eye.
export function chooseEdge(axis: Axis, facing: readonly number[], place: (sides: number[]) => Point): Edge | null {
  const [u, v] = [(axis + 1) % 3, (axis + 2) % 3] as [number, number];
  const facesEye = (which: number, side: number) => facing[which]! * side > 1e-6;
  const center = place([0, 0, 0]);
  let best: Edge | null = null;
  let bestRank = -Infinity;
  for (const [sideU, sideV] of [-1, 1].flatMap((a) => [-1, 1].map((b) => [a, b] as const))) {
    if (facesEye(u, sideU) === facesEye(v, sideV)) continue;
    const end = (side: number) => {
      const sides = [0, 0, 0];
      [sides[axis], sides[u], sides[v]] = [side, sideU, sideV];
      return place(sides);
    };
    const [lower, upper] = [end(-1), end(1)];
    const length = Math.hypot(upper.x - lower.x, upper.y - lower.y);
    const middle = { x: (lower.x + upper.x) / 2, y: (lower.y + upper.y) / 2 };
    const rank = axis === 2 ? -middle.x + 0.01 * middle.y : middle.y - 0.01 * middle.x;
    if (length < kShortest || rank <= bestRank + 1e-6) continue;
    const outward = { x: (upper.y - lower.y) / length, y: (lower.x - upper.x) / length };
    const leadsOff = outward.x * (middle.x - center.x) + outward.y * (middle.y - center.y) >= 0;
    best = { lower, upper, outward: leadsOff ? outward : { x: -outward.x, y: -outward.y } };
    bestRank = rank;
  }
  return best;
}
