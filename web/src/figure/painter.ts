/// Paints a display list on a canvas. The ground is left to the page, so that figures stand on the
/// same surface as the panel around them.

import type { Drawing, DrawingItem } from '../engine/core/protocol';
import type { Point } from './core/gestures';
import { at, type AxisTexts, axisTexts, type Edge, rise } from './core/turnedAxes';
import type { TurnedSurface } from './core/turning';

const kGround = new Set(['background']);

export interface PaintOptions {
  font: string;
  scale: number;
}

export function paintDrawing(context: CanvasRenderingContext2D, drawing: Drawing, { font, scale }: PaintOptions): void {
  context.setTransform(scale, 0, 0, scale, 0, 0);
  context.clearRect(0, 0, drawing.width, drawing.height);
  context.lineJoin = 'round';
  context.lineCap = 'butt';
  let clipped = false;
  for (const item of drawing.items) {
    switch (item.kind) {
      case 'clip':
        context.save();
        clipped = true;
        clip(context, item.points ?? []);
        break;
      case 'restore':
        if (clipped) context.restore();
        clipped = false;
        break;
      case 'text':
        paintText(context, item, font);
        break;
      default:
        if (!kGround.has(item.role)) paintShape(context, item);
    }
  }
  if (clipped) context.restore();
}

function clip(context: CanvasRenderingContext2D, points: (number | null)[]): void {
  const xs = points.filter((_, k) => k % 2 === 0) as number[];
  const ys = points.filter((_, k) => k % 2 === 1) as number[];
  const x = Math.min(...xs);
  const y = Math.min(...ys);
  context.beginPath();
  context.rect(x, y, Math.max(...xs) - x, Math.max(...ys) - y);
  context.clip();
}

function paintShape(context: CanvasRenderingContext2D, item: DrawingItem): void {
  const points = item.points ?? [];
  context.beginPath();
  if (item.kind === 'marker') {
    for (let k = 0; k + 1 < points.length; k += 2) {
      if (points[k] !== null) traceMarker(context, item, points[k]!, points[k + 1]!);
    }
  } else {
    trace(context, points);
    if (item.kind === 'polygon') context.closePath();
  }
  if (item.fill) {
    context.fillStyle = item.fill;
    context.fill();
  }
  if (item.stroke && (item.width ?? 1) > 0) {
    context.strokeStyle = item.stroke;
    context.lineWidth = item.width ?? 1;
    context.setLineDash(item.dash ?? []);
    context.stroke();
  }
}

/// The outline of a marker, moved to its point.
function traceMarker(context: CanvasRenderingContext2D, item: DrawingItem, x: number, y: number): void {
  for (const piece of item.outline ?? []) {
    for (let k = 0; k + 1 < piece.length; k += 2) {
      if (k) context.lineTo(x + piece[k]!, y + piece[k + 1]!);
      else context.moveTo(x + piece[0]!, y + piece[1]!);
    }
    if (item.closed) context.closePath();
  }
}

function trace(context: CanvasRenderingContext2D, points: (number | null)[]): void {
  let pen = false;
  for (let k = 0; k + 1 < points.length; k += 2) {
    const x = points[k];
    const y = points[k + 1];
    if (x === null || y === null || x === undefined || y === undefined) pen = false;
    else if (pen) context.lineTo(x, y);
    else {
      context.moveTo(x, y);
      pen = true;
    }
  }
}

const fontOf = ({ role, size }: DrawingItem, family: string) =>
  `${role === 'title' ? 600 : 400} ${size ?? 12}px ${family}`;

function paintText(context: CanvasRenderingContext2D, item: DrawingItem, font: string): void {
  const x = item.x ?? item.points?.[0] ?? 0;
  const y = item.y ?? item.points?.[1] ?? 0;
  context.save();
  context.translate(x!, y!);
  if (item.angle) context.rotate((item.angle * Math.PI) / 180);
  context.font = fontOf(item, font);
  context.textAlign = item.anchor === 'middle' ? 'center' : item.anchor === 'end' ? 'end' : 'start';
  context.textBaseline = (item.baseline as CanvasTextBaseline | undefined) ?? 'alphabetic';
  context.fillStyle = item.color ?? item.fill ?? '#808080';
  context.fillText(item.text ?? '', 0, 0);
  context.restore();
}

/// Paints a surface while it is turned: walls with their grid, axes and texts as in the last drawing,
/// and faces with their edges.
export function paintTurned(
  context: CanvasRenderingContext2D,
  drawing: Drawing,
  surface: TurnedSurface,
  { font, scale }: PaintOptions,
): void {
  context.setTransform(scale, 0, 0, scale, 0, 0);
  context.clearRect(0, 0, drawing.width, drawing.height);
  context.lineJoin = 'round';
  context.setLineDash([]);
  const { titles, axes, wall, grid, ticks } = partsOf(drawing);
  for (const { corners, grid: lines } of surface.walls(ticks)) {
    traceFour(context, corners, 0);
    if (wall?.fill) context.fillStyle = wall.fill;
    if (wall?.fill) context.fill();
    context.strokeStyle = wall?.stroke ?? '#80808080';
    context.lineWidth = wall?.width ?? 1;
    context.stroke();
    if (grid) strokeLines(context, lines, grid);
  }
  const { count, corners, colors } = surface.faces();
  const edges = surface.colors.map((color) => darker(color));
  context.lineWidth = 0.6;
  for (let k = 0; k < count; k++) {
    traceFour(context, corners, 8 * k);
    context.fillStyle = surface.colors[colors[k]!]!;
    context.strokeStyle = edges[colors[k]!]!;
    context.fill();
    context.stroke();
  }
  titles.forEach((item) => paintText(context, item, font));
  const places = surface.edges();
  axes.forEach((axis, k) => {
    const edge = places[k];
    if (axis && edge) paintAxis(context, axis, edge, font, drawing.width);
  });
}

/// What is taken from the engine's last drawing.
interface Parts {
  titles: DrawingItem[];
  axes: (AxisTexts | null)[];
  wall?: DrawingItem;
  grid?: DrawingItem;
  /// The places of the ticks along each axis, from 0 to 1.
  ticks: number[][];
}
const knownParts = new WeakMap<Drawing, Parts>();

/// Looked for once, since the list is long.
function partsOf(drawing: Drawing): Parts {
  const known = knownParts.get(drawing);
  if (known) return known;
  const axes = axisTexts(drawing);
  const found = {
    titles: drawing.items.filter(({ role }) => role === 'title'),
    axes,
    wall: drawing.items.find(({ role, kind }) => role === 'plot area' && kind === 'polygon'),
    grid: drawing.items.find(({ role }) => role === 'grid'),
    ticks: axes.map((axis) => axis?.texts.filter(({ isLabel }) => !isLabel).map(({ share }) => share) ?? []),
  };
  knownParts.set(drawing, found);
  return found;
}

function strokeLines(context: CanvasRenderingContext2D, ends: Float32Array, { stroke, width }: DrawingItem): void {
  context.beginPath();
  for (let k = 0; k < ends.length; k += 4) {
    context.moveTo(ends[k]!, ends[k + 1]!);
    context.lineTo(ends[k + 2]!, ends[k + 3]!);
  }
  context.strokeStyle = stroke ?? '#80808080';
  context.lineWidth = width ?? 1;
  context.stroke();
}

const kTick = 4;
const kGap = 6;

/// One axis along its edge: the line, a tick and its text at each place, and further out the label,
/// where there is room for it.
function paintAxis(
  context: CanvasRenderingContext2D,
  { line, texts }: AxisTexts,
  edge: Edge,
  font: string,
  room: number,
): void {
  const { lower, upper, outward } = edge;
  const segment = (from: Point, to: Point) => paintShape(context, { ...line, points: [from.x, from.y, to.x, to.y] });
  segment(lower, upper);
  let reach = kTick + kGap;
  for (const { item, share, isLabel } of [...texts].sort((a, b) => Number(a.isLabel) - Number(b.isLabel))) {
    context.font = fontOf(item, font);
    const [across, tall] = [context.measureText(item.text ?? '').width, item.size ?? 12];
    const [width, height] = item.angle ? [tall, across] : [across, tall];
    const support = (Math.abs(outward.x) * width + Math.abs(outward.y) * height) / 2;
    const distance = (isLabel ? reach + kGap : kTick + kGap) + support;
    if (!isLabel) reach = Math.max(reach, distance + support);
    const from = at(edge, share);
    const out = (by: number) => ({ x: from.x + outward.x * by, y: from.y + outward.y * by });
    if (!isLabel) segment(from, out(kTick));
    const [{ x, y }, behind] = [out(distance), rise(item)];
    if (isLabel && Math.abs(x - room / 2) > (room - width) / 2) continue;
    paintText(context, { ...item, x: x + behind.x, y: y + behind.y }, font);
  }
}

function traceFour(context: CanvasRenderingContext2D, corners: Float32Array, at: number): void {
  context.beginPath();
  context.moveTo(corners[at]!, corners[at + 1]!);
  for (let k = 2; k < 8; k += 2) context.lineTo(corners[at + k]!, corners[at + k + 1]!);
  context.closePath();
}

/// As the engine has the edges of faces.
const darker = (color: string) =>
  `#${[1, 3, 5]
    .map((at) => Math.round(parseInt(color.slice(at, at + 2), 16) * 0.62))
    .map((channel) => channel.toString(16).padStart(2, '0'))
    .join('')}`;
