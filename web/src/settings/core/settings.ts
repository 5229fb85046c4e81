/// The engine's settings as the panel shows them, changed by request and taken from the answer.

import { signal } from '@preact/signals-core';
import type { Settings as Values } from '../../engine/core/protocol';
import type { Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';

export const kDigitCounts = [5, 8, 12, 16];

export class Settings {
  readonly values = signal<Values | null>(null);
  readonly version = signal('');
  readonly workDirectory = signal('');
  private cells = 0;

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
  ) {
    // Another window may have changed the digits.
    session.on('console/replaced', () => void this.refresh());
  }

  /// Reads the settings anew, since other windows of the session set them too.
  async refresh(): Promise<void> {
    this.values.value = await this.session.request('settings/get', {}).catch(() => this.values.value);
  }

  opened(answer: { settings: Values; version: string; workDirDisplayText: string; workDir: string }): void {
    this.values.value = answer.settings;
    this.version.value = answer.version;
    this.workDirectory.value = answer.workDirDisplayText || answer.workDir;
    const cells = this.cells;
    this.cells = 0;
    if (cells) this.setCells(cells);
  }

  async set(change: Partial<Values>): Promise<void> {
    await this.dialogs.guard(async () => {
      this.values.value = await this.session.request('settings/set', change);
    });
  }

  /// The width of the console in cells, told to the engine when it differs.
  setCells(cells: number): void {
    if (cells === this.cells) return;
    this.cells = cells;
    if (this.session.state.value !== 'open' || this.values.value?.consoleCells === cells) return;
    void this.set({ consoleCells: cells });
  }
}
