/// The outlines of markers around a point.

import type { DrawingItem } from '../engine/core/protocol';

const kStyles = ['square', 'plus', 'downTriangle', 'upTriangle', 'rightTriangle', 'leftTriangle', 'asterisk',
  'fivePointedStar', 'sixPointedStar', 'cross', 'diamond', 'circle', 'point', 'none'];

type Pen = Pick<CanvasRenderingContext2D, 'moveTo' | 'lineTo' | 'arc' | 'rect' | 'closePath'>;

export function traceMarker(pen: Pen, item: DrawingItem & { marker?: unknown; style?: unknown }, x: number, y: number): void {
  const style = nameOf(item.marker ?? item.style);
  const r = (item.size ?? 6) / 2;
  switch (style) {
    case 'square': return pen.rect(x - r, y - r, 2 * r, 2 * r);
    case 'plus': return strokes(pen, x, y, r, 2, 0);
    case 'cross': return strokes(pen, x, y, r, 2, Math.PI / 4);
    case 'asterisk': return strokes(pen, x, y, r, 3, Math.PI / 2);
    case 'upTriangle': return corners(pen, x, y, r, 3, -Math.PI / 2);
    case 'downTriangle': return corners(pen, x, y, r, 3, Math.PI / 2);
    case 'rightTriangle': return corners(pen, x, y, r, 3, 0);
    case 'leftTriangle': return corners(pen, x, y, r, 3, Math.PI);
    case 'diamond': return corners(pen, x, y, r, 4, 0);
    case 'fivePointedStar': return corners(pen, x, y, r, 5, -Math.PI / 2, 0.45);
    case 'sixPointedStar': return corners(pen, x, y, r, 6, -Math.PI / 2, 0.55);
    case 'none': return undefined;
    default:
      pen.moveTo(x + r, y);
      pen.arc(x, y, r, 0, 2 * Math.PI);
  }
}

function nameOf(style: unknown): string {
  return typeof style === 'number' ? kStyles[style] ?? 'circle' : String(style ?? 'circle');
}

function strokes(pen: Pen, x: number, y: number, r: number, count: number, turn: number): void {
  for (let k = 0; k < count; k++) {
    const angle = turn + (k * Math.PI) / count;
    pen.moveTo(x - r * Math.cos(angle), y - r * Math.sin(angle));
    pen.lineTo(x + r * Math.cos(angle), y + r * Math.sin(angle));
  }
}

function corners(pen: Pen, x: number, y: number, r: number, count: number, turn: number, inner = 0): void {
  const steps = inner ? 2 * count : count;
  for (let k = 0; k < steps; k++) {
    const radius = inner && k % 2 ? r * inner : r;
    const angle = turn + (k * 2 * Math.PI) / steps;
    const at: [number, number] = [x + radius * Math.cos(angle), y + radius * Math.sin(angle)];
    if (k) pen.lineTo(...at); else pen.moveTo(...at);
  }
  pen.closePath();
}
