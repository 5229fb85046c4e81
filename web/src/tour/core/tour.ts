/// The first start: six steps that show where things are and can be left at any time.

import { computed, signal } from '@preact/signals-core';
import type { Panel } from '../../shell/core/layout';

export type StepId = 'welcome' | 'console' | 'editor' | 'figure' | 'files' | 'help';
export interface Step {
  id: StepId;
  panel: Panel;
}

export const kSteps: Step[] = [
  { id: 'welcome', panel: 'console' },
  { id: 'console', panel: 'console' },
  { id: 'editor', panel: 'editor' },
  { id: 'figure', panel: 'figure' },
  { id: 'files', panel: 'files' },
  { id: 'help', panel: 'help' },
];

export class Tour {
  readonly index = signal(-1);
  readonly step = computed(() => kSteps[this.index.value] ?? null);

  constructor(
    private readonly show: (panel: Panel) => void,
    private readonly onEnd: () => void,
  ) {}

  start(): void {
    this.go(0);
  }
  next(): void {
    this.go(this.index.value + 1);
  }
  back(): void {
    this.go(Math.max(0, this.index.value - 1));
  }

  end(): void {
    this.index.value = -1;
    this.show('console');
    this.onEnd();
  }

  private go(index: number): void {
    const step = kSteps[index];
    if (!step) return this.end();
    this.index.value = index;
    this.show(step.panel);
  }
}
