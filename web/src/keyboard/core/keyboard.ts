/// The on-screen keyboard: the layout that is shown and what a press does. The engine decides; the
/// presses go to it one after another, so that their order is kept.

import { computed, signal } from '@preact/signals-core';
import type { Key, KeyboardType, Tap } from '../../engine/core/protocol';
import type { Session } from '../../engine/core/session';

/// What a keyboard writes into.
export interface TextTarget {
  insert(text: string): void;
  deleteBackward(): void;
  enter(): void;
  moveCaret(by: number): void;
}

export class Keyboard {
  readonly layouts = signal<Record<KeyboardType, Key[][]> | null>(null);
  readonly type = signal<KeyboardType>('alpha');
  readonly capLocked = signal(false);
  readonly rows = computed(() => this.layouts.value?.[this.type.value] ?? []);
  readonly target = signal<TextTarget | null>(null);
  private queue: Promise<void> = Promise.resolve();

  constructor(private readonly session: Session) {}

  async load(): Promise<void> {
    this.layouts.value ??= await this.session.request('keyboard/layouts', {});
  }

  press(key: string, tap: Tap = 'single'): Promise<void> {
    this.queue = this.queue.then(() => this.send(key, tap)).catch(() => {});
    return this.queue;
  }

  /// Writes one of a key's alternatives.
  pick(text: string): void {
    this.target.value?.insert(text);
  }

  private async send(key: string, tap: Tap): Promise<void> {
    const answer = await this.session.request('keyboard/press', {
      keyboardType: this.type.value,
      capLocked: this.capLocked.value,
      key,
      tap,
    });
    this.type.value = answer.keyboardType;
    this.capLocked.value = answer.capLocked;
    if (answer.insert) this.target.value?.insert(answer.insert);
    if (answer.action === 'deleteBackward') this.target.value?.deleteBackward();
    if (answer.action === 'enter') this.target.value?.enter();
  }
}
