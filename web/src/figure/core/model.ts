/// Readings of the coded figure model: what the settings panel and the table of values need. A number
/// that is not finite stands as null.

import type { FigureModel } from '../../engine/core/protocol';

export interface Limits {
  lower: number;
  upper: number;
}
export interface LineAttributes {
  lineStyle: number;
  lineColor: string;
  lineWidth: number;
  markerStyle: number;
  markerSize: number;
  name: string | null;
  shownInLegend: boolean;
  type: number;
}
export interface PlotLine {
  attribute: LineAttributes;
  points: [number | null, number | null][];
}

export const linesOf = (model: FigureModel | null) => (model?.lines as PlotLine[] | undefined) ?? [];
export const surfacesOf = (model: FigureModel | null) =>
  (model?.surfaces as
    | { points: { x: number; y: number; z: number }[]; attributes: { numRows: number; numCols: number } }[]
    | undefined) ?? [];
export const limitsOf = (model: FigureModel | null, axis: string) =>
  (model?.[`${axis}lims`] as Limits | undefined) ?? { lower: 0, upper: 1 };
export const textOf = (model: FigureModel | null, key: string) => (model?.[key] as string | null | undefined) ?? '';

/// Up to six significant digits, without a tail of zeros.
export function short(value: number | null | undefined): string {
  if (value === null || value === undefined) return '–';
  return String(Number(value.toPrecision(6)));
}
