/// The state of the console: items as they arise, the run and what it waits for, the history. Items
/// are kept in one array that grows in place, in the order of their indices, which may have gaps;
/// `version` tells views that it did.

import { computed, signal } from '@preact/signals-core';
import type { Clock } from '../../engine/core/ports';
import type { Completion, ConsoleItem, RunStatus } from '../../engine/core/protocol';
import type { Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';
import { text as t } from '../../texts/texts';
import { History } from './history';

/// More items than these are not kept in the page; the older half of them goes.
const kMostItems = 40_000;

export interface Completions {
  from: number;
  items: Completion[];
}

export class Console {
  items: ConsoleItem[] = [];
  readonly version = signal(0);
  /// Counts the times that all items were replaced at once.
  readonly generation = signal(0);
  readonly status = signal<RunStatus>('idle');
  readonly prompt = signal('');
  readonly progress = signal('');
  readonly seconds = signal<number | null>(null);
  readonly startedAt = signal(0);
  readonly history = new History();
  readonly historyVersion = signal(0);
  readonly busy = computed(() => this.status.value !== 'idle');
  readonly announcement = signal('');
  private drawPending = false;
  /// What was run before the first connection.
  private early = '';
  /// The engine's last word, which `status` may be ahead of.
  private told: RunStatus = 'idle';

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
    private readonly clock: Clock,
    private readonly folder: () => string,
  ) {
    session.on('console/item', (item) => this.add(item));
    session.on('console/cleared', () => this.replace([]));
    session.on('console/replaced', ({ items }) => this.replace(items));
    session.on('console/prompt', ({ text }) => {
      this.prompt.value = text;
    });
    session.on('console/progress', ({ text }) => {
      this.progress.value = text;
    });
    session.on('run/state', ({ status }) => this.setStatus(status));
    session.state.subscribe((state) => {
      if (state === 'lost' || state === 'refused') this.showStatus(this.told);
    });
  }

  /// Takes the engine's state as it is now, after the connection was made or made again.
  async refresh(status: RunStatus): Promise<void> {
    this.setStatus(status);
    const { items } = await this.session.request('console/items', {});
    this.replace(items);
    await this.loadHistory();
    const early = this.early;
    this.early = '';
    if (early && status === 'idle') this.run(early);
  }

  /// The Run button: starts a command, answers `input`, or ends a `pause`. Gives true when the text
  /// was taken and the input can be cleared.
  run(text: string): boolean {
    const status = this.status.value;
    if (this.session.state.value === 'connecting' && text.trim()) {
      this.early = text;
      this.showStatus('running');
      return true;
    }
    if (this.session.state.value !== 'open') {
      this.dialogs.say(t.connection.notNow);
      return false;
    }
    if (status === 'running') return false;
    if (status === 'idle') {
      if (!text.trim()) return false;
      void this.start(() => this.session.request('console/run', { text, folder: this.folder() }));
      return true;
    }
    void this.dialogs.guard(() => this.session.request('console/answer', { text: status === 'paused' ? '' : text }));
    return status === 'waitInput';
  }

  async runFile(path: string): Promise<void> {
    if (this.status.value === 'idle') await this.start(() => this.session.request('file/run', { path }));
  }

  stop(): void {
    void this.dialogs.guard(() => this.session.request('run/stop', {}));
  }

  clear(): void {
    void this.dialogs.guard(() => this.session.request('console/clear', {}));
  }

  previous(current: string): string | null {
    return this.moved(this.history.previous(current));
  }
  next(): string | null {
    return this.moved(this.history.next());
  }

  async complete(text: string, position: number): Promise<Completions | null> {
    try {
      return await this.session.request('console/complete', { text, position });
    } catch {
      return null; // no completion is better than a dialog while typing
    }
  }

  /// Whether Enter may run the text; false while a block is open.
  async isComplete(text: string): Promise<boolean> {
    try {
      return (await this.session.request('console/isComplete', { text })).complete;
    } catch {
      return true;
    }
  }

  private async start(request: () => Promise<{ seconds: number }>): Promise<void> {
    this.seconds.value = null;
    this.history.settle();
    this.showStatus('running'); // before the engine tells, so that a second press runs nothing
    const answer = await this.dialogs.guard(request);
    if (answer) this.seconds.value = answer.seconds;
    else this.showStatus(this.told);
    await this.loadHistory().catch(() => {});
  }

  private async loadHistory(): Promise<void> {
    this.history.load((await this.session.request('console/history', {})).items);
    this.historyVersion.value++;
  }

  private moved(text: string | null): string | null {
    this.historyVersion.value++;
    return text;
  }

  private add(item: ConsoleItem): void {
    const last = this.items[this.items.length - 1];
    if (!last || item.index > last.index) this.items.push(item);
    else this.items = this.items.map((each) => (each.index === item.index ? item : each));
    if (this.items.length > kMostItems) {
      this.items = this.items.slice(-kMostItems / 2);
      this.generation.value++;
    }
    this.drawSoon();
  }

  /// A burst of items is drawn, and read out, once a picture.
  private drawSoon(): void {
    if (this.drawPending) return;
    this.drawPending = true;
    this.clock.nextFrame(() => {
      this.drawPending = false;
      const last = this.items[this.items.length - 1];
      if (last && last.contentType !== 'inputText') this.announcement.value = last.text.slice(0, 400);
      this.version.value++;
    });
  }

  private replace(items: ConsoleItem[]): void {
    this.items = items;
    this.generation.value++;
    this.version.value++;
  }

  private setStatus(status: RunStatus): void {
    this.told = status;
    this.showStatus(status);
  }

  private showStatus(status: RunStatus): void {
    if (status !== 'idle' && this.status.value === 'idle') this.startedAt.value = this.clock.now();
    if (status === 'idle') this.progress.value = '';
    if (status !== 'waitInput') this.prompt.value = '';
    this.status.value = status;
  }
}
