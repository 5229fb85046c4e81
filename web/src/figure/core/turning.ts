/// A surface that is turned under the finger: its mesh, thinned, as the engine's box sees it. The
/// engine is told when the finger is lifted, and draws the exact picture then; the projection is
/// that of its `BoxView`, so that nothing jumps.

import type { Mesh } from '../../engine/core/protocol';
import { bytesFrom } from './base64';
import type { PendingGesture } from './gestures';
import { type Axis, chooseEdge, type Edge, kAxes } from './turnedAxes';

const kHeight = 0.75;
const kHalf = [1, 1, kHeight];
const kMostStretch = 1.3;
const kHalfTurn = 180;
/// Faces of the mesh are about so large, in points.
const kFaceSize = 7;
const kEdge = 1 + 1e-6;
/// Lines of the grid so near to an edge of the box are left to the edge.
const kNearEdge = 0.004;

type Matrix = [number, number, number, number, number, number, number, number, number];
export type Area = [left: number, top: number, right: number, bottom: number];

/// Corners on the screen, and the colour of each face, from the furthest to the nearest.
export interface Faces {
  count: number;
  /// x and y of four corners a face.
  corners: Float32Array;
  colors: Uint8Array;
}

/// A wall behind the surface: its corners, and the ends of the lines of its grid, four numbers each.
export interface Wall {
  corners: Float32Array;
  grid: Float32Array;
}

function rotation([x, y, z]: readonly number[]): Matrix {
  const [a, b, c] = [x!, y!, z!].map((degrees) => (degrees * Math.PI) / kHalfTurn) as [number, number, number];
  const [ca, sa, cb, sb, cc, sc] = [Math.cos(a), Math.sin(a), Math.cos(b), Math.sin(b), Math.cos(c), Math.sin(c)];
  return [
    cb * cc,
    -cb * sc,
    sb,
    sa * sb * cc + ca * sc,
    -sa * sb * sc + ca * cc,
    -sa * cb,
    -ca * sb * cc + sa * sc,
    ca * sb * sc + sa * cc,
    ca * cb,
  ];
}

interface Grid {
  rows: number;
  cols: number;
  /// Points in the box, three numbers each, column by column; not a number outside of it.
  points: Float32Array;
}

function thinned(count: number, most: number): number[] {
  const stride = Math.max(1, Math.ceil((count - 1) / most));
  const kept = Array.from({ length: Math.ceil((count - 1) / stride) }, (_, k) => k * stride);
  return [...kept, count - 1];
}

export class TurnedSurface {
  private readonly grids: Grid[];
  private readonly rotation: [number, number, number];
  private zoom: number;

  /// `area` is the room of the box in the picture.
  constructor(
    private readonly mesh: Mesh,
    private readonly area: Area,
  ) {
    this.rotation = [...mesh.view.rotation];
    this.zoom = mesh.view.zoom;
    const most = Math.max(8, Math.max(area[2] - area[0], area[3] - area[1]) / kFaceSize);
    const grids = mesh.surfaces.filter(({ numRows, numCols }) => numRows > 1 && numCols > 1);
    this.grids = grids.map((one) => this.gridOf(one, most));
  }

  get colors(): string[] {
    return this.mesh.colors;
  }

  /// Takes a gesture in; false for one that it knows nothing of.
  apply(gesture: PendingGesture, width: number, height: number): boolean {
    if (gesture.kind === 'rotate') {
      const z = this.rotation[2] + (gesture.dx / width) * kHalfTurn;
      this.rotation[2] = z - 2 * kHalfTurn * Math.round(z / (2 * kHalfTurn));
      this.rotation[0] = Math.min(0, Math.max(-kHalfTurn, this.rotation[0] + (gesture.dy / height) * kHalfTurn));
    } else if (gesture.kind === 'zoom') this.zoom = Math.min(50, Math.max(0.05, this.zoom * gesture.scale));
    else return false;
    return true;
  }

  /// The three walls behind the surface. `ticks` are the places of the ticks along each axis, from 0 to 1.
  walls(ticks: readonly (readonly number[])[] = []): Wall[] {
    const facing = rotation(this.rotation).slice(6);
    return kAxes
      .filter((axis) => Math.abs(facing[axis]!) > 1e-6)
      .map((axis) => this.wallAcross(axis, facing[axis]! < 0 ? 1 : -1, ticks));
  }

  private wallAcross(axis: Axis, side: number, ticks: readonly (readonly number[])[]): Wall {
    const place = this.projection();
    const [along, across] = [(axis + 1) % 3, (axis + 2) % 3] as [Axis, Axis];
    const put = (points: [number, number][], [u, v]: [Axis, Axis]) => {
      const screen = new Float32Array(2 * points.length);
      points.forEach(([a, b], k) => {
        const p = [0, 0, 0];
        [p[axis], p[u], p[v]] = [side * kHalf[axis]!, a * kHalf[u]!, b * kHalf[v]!];
        place(p, 0, screen, 2 * k);
      });
      return screen;
    };
    const lines = (u: Axis, v: Axis) =>
      put(
        (ticks[u] ?? [])
          .filter((share) => share > kNearEdge && share < 1 - kNearEdge)
          .flatMap((share) => [-1, 1].map((end): [number, number] => [2 * share - 1, end])),
        [u, v],
      );
    return {
      corners: put([[-1, -1], [1, -1], [1, 1], [-1, 1]], [along, across]),
      grid: Float32Array.from([...lines(along, across), ...lines(across, along)]),
    };
  }

  /// The edges along which the axes x, y and z run; null for one that is seen end on.
  edges(): (Edge | null)[] {
    const place = this.projection();
    const out = new Float32Array(2);
    const onScreen = (sides: number[]) => {
      place(
        sides.map((side, axis) => side * kHalf[axis]!),
        0,
        out,
        0,
      );
      return { x: out[0]!, y: out[1]! };
    };
    const facing = rotation(this.rotation).slice(6);
    return kAxes.map((axis) => chooseEdge(axis, facing, onScreen));
  }

  faces(): Faces {
    const most = this.grids.reduce((sum, { rows, cols }) => sum + (rows - 1) * (cols - 1), 0);
    const corners = new Float32Array(8 * most);
    const heights = new Uint8Array(most);
    const order = new Float64Array(most);
    const place = this.projection();
    let count = 0;
    for (const { rows, cols, points } of this.grids) {
      const screen = new Float32Array(3 * rows * cols);
      for (let k = 0; k < rows * cols; k++) screen[3 * k + 2] = place(points, 3 * k, screen, 3 * k);
      for (let j = 0; j + 1 < cols; j++) {
        for (let i = 0; i + 1 < rows; i++) {
          const a = j * rows + i;
          const four = [a, a + 1, a + rows + 1, a + rows];
          let depth = 0;
          let height = 0;
          four.forEach((k, at) => {
            corners[8 * count + 2 * at] = screen[3 * k]!;
            corners[8 * count + 2 * at + 1] = screen[3 * k + 1]!;
            depth += screen[3 * k + 2]! / 4;
            height += points[3 * k + 2]! / 4;
          });
          if (Number.isNaN(depth)) continue;
          heights[count] = Math.round(((height / kHeight + 1) / 2) * (this.colors.length - 1));
          order[count] = Math.round((depth + 4) * 1e6) * 0x100000 + count; // sorted by depth, and known by the rest
          count++;
        }
      }
    }
    return ordered(count, corners, heights, order.subarray(0, count).sort());
  }

  private gridOf({ numRows, numCols, points }: Mesh['surfaces'][number], most: number): Grid {
    const data = new Float32Array(bytesFrom(points).buffer);
    const [rows, cols] = [thinned(numRows, most), thinned(numCols, most)];
    const box = new Float32Array(3 * rows.length * cols.length);
    const limits = [this.mesh.xlims, this.mesh.ylims, this.mesh.zlims];
    cols.forEach((j, column) =>
      rows.forEach((i, row) => {
        const at = 3 * (column * rows.length + row);
        for (let axis = 0; axis < 3; axis++) {
          const { lower, upper } = limits[axis]!;
          const share = upper > lower ? ((data[3 * (j * numRows + i) + axis]! - lower) / (upper - lower)) * 2 - 1 : 0;
          box[at + axis] = Math.abs(share) <= kEdge ? share * (axis === 2 ? kHeight : 1) : NaN;
        }
      }),
    );
    return { rows: rows.length, cols: cols.length, points: box };
  }

  /// Puts a point of the box onto the screen, and gives how near to the eye it is.
  private projection() {
    const [a, b, c, d, e, f, g, h, k] = rotation(this.rotation);
    const reach = (x: number, y: number, z: number) => Math.abs(x) + Math.abs(y) + kHeight * Math.abs(z);
    const [left, top, right, bottom] = this.area;
    const x = (right - left) / 2 / reach(a, b, c);
    const y = (bottom - top) / 2 / reach(d, e, f);
    const both = Math.min(x, y) * kMostStretch;
    const [scaleX, scaleY] = [Math.min(x, both) * this.zoom, Math.min(y, both) * this.zoom];
    const [moveX, moveY] = this.mesh.view.translation;
    const [midX, midY] = [(left + right) / 2 + moveX * scaleX, (top + bottom) / 2 - moveY * scaleY];
    return (from: ArrayLike<number>, at: number, to: Float32Array, out: number): number => {
      const [p, q, r] = [from[at]!, from[at + 1]!, from[at + 2]!];
      to[out] = midX + (a * p + b * q + c * r) * scaleX;
      to[out + 1] = midY - (d * p + e * q + f * r) * scaleY;
      return g * p + h * q + k * r;
    };
  }
}

function ordered(count: number, corners: Float32Array, heights: Uint8Array, order: Float64Array): Faces {
  const sorted: Faces = { count, corners: new Float32Array(8 * count), colors: new Uint8Array(count) };
  for (let k = 0; k < count; k++) {
    const from = order[k]! % 0x100000;
    sorted.corners.set(corners.subarray(8 * from, 8 * from + 8), 8 * k);
    sorted.colors[k] = heights[from]!;
  }
  return sorted;
}
