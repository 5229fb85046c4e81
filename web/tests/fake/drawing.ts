/// A figure to look at: a model of two lines or a mesh, and a display list of it.

import type { Drawing, DrawingItem, Theme } from '../../src/engine/core/protocol';

const kCount = 300;
const wave = (x: number, k: number) => Math.exp(-x * x) * (k ? Math.cos(6 * x) : 1);

export function exampleModel(kind: 'plot' | 'surface'): Record<string, unknown> {
  if (kind === 'surface') {
    return {
      surfaces: [{ points: [{ x: 0, y: 0, z: 0 }], attributes: { numRows: 1, numCols: 1, type: 0 } }],
      title: null,
      grid: true,
      xlabel: '',
      ylabel: '',
      zlabel: '',
      xlims: { lower: 0, upper: 1 },
      ylims: { lower: 0, upper: 1 },
      zlims: { lower: 0, upper: 1 },
      autoXLims: true,
      autoYLims: true,
      autoZLims: true,
    };
  }
  const xs = Array.from({ length: kCount }, (_, k) => -3 + (6 * k) / (kCount - 1));
  return {
    lines: ['envelope', 'wave'].map((name, k) => ({
      points: xs.map((x) => [x, wave(x, k)]),
      attribute: {
        lineStyle: 0,
        lineColor: '',
        lineWidth: 1,
        markerStyle: 13,
        markerSize: 1,
        name,
        shownInLegend: true,
        type: 0,
      },
    })),
    title: 'Wave packet',
    xLabel: null,
    yLabel: null,
    shouldShowLegend: true,
    shouldShowGrid: true,
    shouldHold: false,
    legendAttributes: { position: 0 },
    xlims: { lower: -3, upper: 3 },
    ylims: { lower: -1, upper: 1 },
    autoXLimits: true,
    autoYLimits: true,
  };
}

export function drawingOf(_: unknown, width: number, height: number, theme: Theme): Drawing {
  const [ink, grid, ...colors] =
    theme === 'dark'
      ? ['#b9bbc1ff', '#3b3d42ff', '#5aa0ffff', '#ff6464ff']
      : ['#4c4e54ff', '#d3d4d8ff', '#1f6fd6ff', '#d1343fff'];
  const area = { x: 52, y: 40, width: width - 72, height: height - 80 };
  const place = (x: number, y: number): [number, number] => [
    area.x + ((x + 3) / 6) * area.width,
    area.y + ((1 - y) / 2) * area.height,
  ];
  const items: DrawingItem[] = [
    { kind: 'polygon', role: 'background', points: [0, 0, width, 0, width, height, 0, height], fill: '#ffffffff' },
  ];
  for (let x = -3; x <= 3; x++) {
    const [px, bottom] = place(x, -1);
    items.push({ kind: 'path', role: 'grid', points: [px, area.y, px, bottom], stroke: grid, width: 0.5 });
    items.push({
      kind: 'text',
      role: 'x tick label',
      x: px,
      y: bottom + 18,
      text: String(x),
      size: 12,
      anchor: 'middle',
      color: ink,
    });
  }
  for (let y = -1; y <= 1; y += 0.5) {
    const [, py] = place(0, y);
    items.push({ kind: 'path', role: 'grid', points: [area.x, py, area.x + area.width, py], stroke: grid, width: 0.5 });
    items.push({
      kind: 'text',
      role: 'y tick label',
      x: area.x - 8,
      y: py + 4,
      text: y.toFixed(1),
      size: 12,
      anchor: 'end',
      color: ink,
    });
  }
  items.push({
    kind: 'polygon',
    role: 'x axis',
    points: [
      area.x,
      area.y,
      area.x + area.width,
      area.y,
      area.x + area.width,
      area.y + area.height,
      area.x,
      area.y + area.height,
    ],
    stroke: ink,
    width: 1,
  });
  items.push({
    kind: 'text',
    role: 'title',
    x: width / 2,
    y: 24,
    text: 'Wave packet',
    size: 15,
    anchor: 'middle',
    color: ink,
  });
  items.push({ kind: 'clip', role: 'plot area', points: [area.x, area.y, area.x + area.width, area.y + area.height] });
  [0, 1].forEach((k) =>
    items.push({
      kind: 'path',
      role: `line ${k + 1}`,
      stroke: colors[k],
      width: 1.5,
      points: Array.from({ length: kCount }, (_, i) => -3 + (6 * i) / (kCount - 1)).flatMap((x) =>
        place(x, wave(x, k)),
      ),
    }),
  );
  items.push({ kind: 'restore', role: 'plot area' });
  return {
    width,
    height,
    plotArea: [area.x, area.y, area.x + area.width, area.y + area.height],
    items,
    title: 'Wave packet',
    description: 'Plot “Wave packet” with 2 lines.',
  };
}
