/// Twins of the device for tests: a clock that stands still until it is told, a store in memory, an
/// app on a fake session.

import type { Clock, Store } from '../../src/engine/core/ports';
import { App } from '../../src/shell/core/app';
import { FakeSession, MemoryEngine } from '../fake/engine';

export class TestClock implements Clock {
  time = 0;
  private waiting: { at: number; work: () => void }[] = [];
  now() {
    return this.time;
  }
  after(milliseconds: number, work: () => void) {
    const entry = { at: this.time + milliseconds, work };
    this.waiting.push(entry);
    return () => {
      this.waiting = this.waiting.filter((each) => each !== entry);
    };
  }
  nextFrame(work: () => void) {
    this.after(16, work);
  }
  pass(milliseconds: number) {
    this.time += milliseconds;
    const due = this.waiting.filter((each) => each.at <= this.time);
    this.waiting = this.waiting.filter((each) => each.at > this.time);
    due.forEach(({ work }) => work());
  }
}

export function memoryStore(capacity = Infinity): Store & { keys(): string[] } {
  const texts = new Map<string, string>();
  return {
    read: (key) => texts.get(key) ?? null,
    write: (key, text) => {
      if (text.length > capacity) return false;
      texts.set(key, text);
      return true;
    },
    remove: (key) => {
      texts.delete(key);
    },
    keys: () => [...texts.keys()],
  };
}

export function startApp(fill: (session: FakeSession) => void = () => {}, store = memoryStore()) {
  const session = new FakeSession();
  fill(session);
  const engine = new MemoryEngine(session);
  const clock = new TestClock();
  store.write('preferences', '{"tourSeen":true}');
  const app = new App(engine, store, clock);
  app.start();
  return { app, session, engine, clock, store };
}

/// Lets everything that waits on an answer go on.
export const settle = () => new Promise<void>((resolve) => setTimeout(resolve, 5));
