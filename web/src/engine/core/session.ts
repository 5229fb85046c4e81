/// The client of the protocol: numbers requests, matches answers, hands notifications on. It knows
/// no socket. ../session.test.ts plays both ends.

import { signal } from '@preact/signals-core';
import type { CarrierState, Engine } from './engine';
import type { Method, Notification, Notifications, Params, Result } from './protocol';

/// An error that the engine answered. Code 1 is the alert of a panel, with its own title and text.
export class EngineError extends Error {
  constructor(
    readonly code: number,
    readonly title: string,
    readonly text: string,
  ) {
    super(text ? `${title}: ${text}` : title);
  }
  get isAlert(): boolean {
    return this.code === 1;
  }
}

/// The carrier was lost before the answer came; whether the request was carried out is not known.
export class ConnectionLost extends Error {}

interface Waiting {
  method: Method;
  since: number;
  resolve(value: unknown): void;
  reject(error: Error): void;
}
type Handler = (params: never) => void;

export interface Timing {
  method: Method;
  milliseconds: number;
}

export class Session {
  readonly state = signal<CarrierState>('connecting');
  /// The latest requests with their times, newest last, for the diagnostics.
  readonly timings: Timing[] = [];
  private nextId = 1;
  private readonly waiting = new Map<number, Waiting>();
  private readonly handlers = new Map<string, Set<Handler>>();

  constructor(
    private readonly engine: Engine,
    private readonly now: () => number = () => 0,
  ) {
    engine.listen(
      (text) => this.receive(text),
      (state) => this.changeState(state),
    );
  }

  /// Sends a request. Rejects with `EngineError` or `ConnectionLost`.
  request<M extends Method>(method: M, params: Params<M>): Promise<Result<M>> {
    if (this.state.value !== 'open') return Promise.reject(new ConnectionLost(method));
    const id = this.nextId++;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { method, since: this.now(), resolve: resolve as (v: unknown) => void, reject });
      this.engine.send(JSON.stringify({ jsonrpc: '2.0', id, method, params }));
    });
  }

  /// Calls the handler at each notification of that name. Returns the way to stop it.
  on<N extends Notification>(name: N, handler: (params: Notifications[N]) => void): () => void {
    let set = this.handlers.get(name);
    if (!set) this.handlers.set(name, (set = new Set()));
    set.add(handler as Handler);
    return () => set.delete(handler as Handler);
  }

  open(): void {
    this.engine.open();
  }
  retry(): void {
    this.engine.retry();
  }

  private receive(text: string): void {
    const message = JSON.parse(text);
    if (message.method !== undefined) {
      this.handlers.get(message.method)?.forEach((handler) => handler(message.params as never));
      return;
    }
    const waiting = this.waiting.get(message.id);
    if (!waiting) return;
    this.waiting.delete(message.id);
    this.timings.push({ method: waiting.method, milliseconds: this.now() - waiting.since });
    if (this.timings.length > 200) this.timings.shift();
    if (message.error) {
      const { code, message: title, data } = message.error;
      waiting.reject(new EngineError(code, data?.title ?? title, data?.text ?? ''));
    } else {
      waiting.resolve(message.result);
    }
  }

  private changeState(state: CarrierState): void {
    this.state.value = state;
    if (state === 'open') return;
    const lost = [...this.waiting.values()];
    this.waiting.clear();
    lost.forEach((request) => request.reject(new ConnectionLost(request.method)));
  }
}
