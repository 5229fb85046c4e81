/// The engine behind a WebSocket. A lost connection is taken up again, first quickly, then every
/// few seconds, and at once when the page comes back to the front or the network returns.

import type { CarrierState, Engine } from './core/engine';

const kFirstDelay = 250;
const kLongestDelay = 5000;

export class WebSocketEngine implements Engine {
  private socket: WebSocket | null = null;
  private delay = kFirstDelay;
  private timer = 0;
  private onText: (text: string) => void = () => {};
  private onState: (state: CarrierState) => void = () => {};

  constructor(
    private readonly address: string,
    private readonly isRefused: () => Promise<boolean>,
  ) {
    const wake = () => {
      if (document.visibilityState === 'visible') this.retry();
    };
    document.addEventListener('visibilitychange', wake);
    window.addEventListener('online', wake);
  }

  listen(onText: (text: string) => void, onState: (state: CarrierState) => void): void {
    this.onText = onText;
    this.onState = onState;
  }

  send(text: string): void {
    if (this.socket?.readyState === WebSocket.OPEN) this.socket.send(text);
  }

  open(): void {
    const socket = new WebSocket(this.address);
    this.socket = socket;
    let opened = false;
    socket.onopen = () => {
      opened = true;
      this.delay = kFirstDelay;
      this.onState('open');
    };
    socket.onmessage = (event) => this.onText(String(event.data));
    socket.onclose = () => {
      if (this.socket === socket) void this.lost(opened);
    };
  }

  retry(): void {
    if (this.socket || !this.timer) return;
    window.clearTimeout(this.timer);
    this.timer = 0;
    this.open();
  }

  close(): void {
    const socket = this.socket;
    this.socket = null;
    socket?.close();
  }

  private async lost(wasOpen: boolean): Promise<void> {
    this.socket = null;
    this.onState(!wasOpen && (await this.isRefused()) ? 'refused' : 'lost');
    this.timer = window.setTimeout(() => {
      this.timer = 0;
      this.open();
    }, this.delay);
    this.delay = Math.min(this.delay * 2, kLongestDelay);
  }
}
