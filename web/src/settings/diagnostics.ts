/// What a person may want to send with a fault. It holds no commands, no values and no file names.

import type { App } from '../shell/core/app';

export function diagnostics(app: App): string {
  const byMethod = new Map<string, number[]>();
  for (const { method, milliseconds } of app.session.timings) {
    byMethod.set(method, [...(byMethod.get(method) ?? []), milliseconds]);
  }
  const times = [...byMethod].map(([method, all]) => {
    const sorted = all.sort((a, b) => a - b);
    return `  ${method}: ${all.length} requests, median ${sorted[sorted.length >> 1]!.toFixed(1)} ms, longest ${sorted[sorted.length - 1]!.toFixed(1)} ms`;
  });
  return [
    `Kelo ${app.settings.version.value}`,
    `Time: ${new Date().toISOString()}`,
    `Browser: ${navigator.userAgent}`,
    `Window: ${innerWidth} x ${innerHeight}, ${devicePixelRatio} pixels a point, layout ${app.layout.mode.value}`,
    `Connection: ${app.session.state.value}, run ${app.console.status.value}`,
    `Console items: ${app.console.items.length}; open files: ${app.editor.files.value.length}; variables: ${app.workspace.variables.value.length}`,
    `Figure: ${app.figure.kind.value}, ${app.figure.drawing.value?.items.length ?? 0} items`,
    `Preferences: ${JSON.stringify(app.preferences.value.value)}`,
    'Times:',
    ...times,
    'Last errors:',
    ...app.dialogs.faults.slice(-20).map((fault) => `  ${fault.replace(/\n/g, '\n    ')}`),
  ].join('\n');
}
