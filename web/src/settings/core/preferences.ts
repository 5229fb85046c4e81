/// The preferences as the app watches and keeps them.

import { signal } from '@preact/signals-core';
import type { Store } from '../../engine/core/ports';
import { type Preferences, readPreferences } from './preferenceValues';

export class PreferenceStore {
  readonly value = signal<Preferences>(readPreferences(null));

  constructor(private readonly store: Store) {
    this.value.value = readPreferences(store.read('preferences'));
  }

  set(change: Partial<Preferences>): void {
    this.value.value = { ...this.value.value, ...change };
    this.store.write('preferences', JSON.stringify(this.value.value));
  }
}
