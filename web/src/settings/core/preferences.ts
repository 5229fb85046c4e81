/// What a person sets on this device alone: look, motion, keyboard. The engine's own settings
/// (digits, warnings, order of files) are kept by the engine.

import { signal } from '@preact/signals-core';
import type { Store } from '../../engine/core/ports';

export interface Preferences {
  theme: 'auto' | 'light' | 'dark';
  keyboard: 'auto' | 'own' | 'system';
  motion: 'auto' | 'off';
  /// Size of code in the console and the editor, in percent.
  codeSize: number;
  /// Enter runs the command; otherwise it makes a new line and Ctrl+Enter runs.
  enterRuns: boolean;
  tourSeen: boolean;
}

export const kDefaults: Preferences = {
  theme: 'auto',
  keyboard: 'auto',
  motion: 'auto',
  codeSize: 100,
  enterRuns: true,
  tourSeen: false,
};

export class PreferenceStore {
  readonly value = signal<Preferences>(kDefaults);

  constructor(private readonly store: Store) {
    try {
      this.value.value = { ...kDefaults, ...JSON.parse(store.read('preferences') ?? '{}') };
    } catch {
      /* an unreadable text counts as none */
    }
  }

  set(change: Partial<Preferences>): void {
    this.value.value = { ...this.value.value, ...change };
    this.store.write('preferences', JSON.stringify(this.value.value));
  }
}
