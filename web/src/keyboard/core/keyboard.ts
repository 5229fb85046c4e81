/// The on-screen keyboard: the layout that is shown and what a press does. The engine decides, but
/// no letter waits for its answer: what it will say is done at once, and mended if it says otherwise.

import { computed, signal } from '@preact/signals-core';
import type { Key, KeyboardType, KeyPress, Tap } from '../../engine/core/protocol';
import type { Session } from '../../engine/core/session';

/// What a keyboard writes into.
export interface TextTarget {
  insert(text: string): void;
  deleteBackward(): void;
  enter(): void;
  moveCaret(by: number): void;
}

/// What the engine will say to a press.
function expected(type: KeyboardType, capLocked: boolean, { id, char }: Key, tap: Tap): KeyPress {
  const shown = (keyboardType: KeyboardType, locked = false) => ({ keyboardType, capLocked: locked });
  if (id === 'shift') return tap === 'double' ? shown('alphaCap', true) : shown(type === 'alphaCap' ? 'alpha' : 'alphaCap');
  if (id === 'numKeyboard') return shown('symbol');
  if (id === 'abc') return shown('alpha');
  if (id === 'deleteBackward' || id === 'enter') return { ...shown(type, capLocked), action: id };
  return { ...shown(type === 'alphaCap' && !capLocked ? 'alpha' : type, capLocked), insert: char };
}

export class Keyboard {
  readonly layouts = signal<Record<KeyboardType, Key[][]> | null>(null);
  readonly type = signal<KeyboardType>('alpha');
  readonly capLocked = signal(false);
  readonly rows = computed(() => this.layouts.value?.[this.type.value] ?? []);
  readonly target = signal<TextTarget | null>(null);
  private presses = 0;

  constructor(private readonly session: Session) {}

  async load(): Promise<void> {
    this.layouts.value ??= await this.session.request('keyboard/layouts', {});
  }

  /// Ends when the engine has answered; what it will say is done when the call returns.
  async press(id: string, tap: Tap = 'single'): Promise<void> {
    const [keyboardType, capLocked] = [this.type.value, this.capLocked.value];
    const key = Object.values(this.layouts.value ?? {})
      .flat(2)
      .find((each) => each.id === id);
    if (!key) return;
    const done = expected(keyboardType, capLocked, key, tap);
    this.carryOut(done);
    const mine = ++this.presses;
    try {
      const answer = await this.session.request('keyboard/press', { keyboardType, capLocked, key: id, tap });
      if (mine === this.presses) this.mend(done, answer);
    } catch {
      // without an answer it stays as it was done
    }
  }

  /// Writes one of a key's alternatives.
  pick(text: string): void {
    this.target.value?.insert(text);
  }

  private carryOut({ keyboardType, capLocked, insert, action }: KeyPress): void {
    this.type.value = keyboardType;
    this.capLocked.value = capLocked;
    if (insert) this.target.value?.insert(insert);
    if (action) this.target.value?.[action]();
  }

  private mend(done: KeyPress, answer: KeyPress): void {
    const isSame = done.insert === answer.insert && done.action === answer.action;
    if (!isSame) Array.from(done.insert ?? '', () => this.target.value?.deleteBackward());
    this.carryOut(isSame ? { ...answer, insert: undefined, action: undefined } : answer);
  }
}
