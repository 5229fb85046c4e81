/// What stands between the app and the numeric engine: a carrier of JSON texts. The WebSocket to
/// `kelo serve` is one; a worker that holds the engine as WebAssembly can be another.

/// Refused: there is an engine, but this page is not let in.
export type CarrierState = 'connecting' | 'open' | 'lost' | 'refused';

export interface Engine {
  /// Hands one JSON text over. Texts sent while the carrier is not open are dropped.
  send(text: string): void;
  /// Sets the one receiver of texts and of changes of state. Called once, before `open`.
  listen(onText: (text: string) => void, onState: (state: CarrierState) => void): void;
  open(): void;
  /// Tries to connect at once instead of waiting for the next attempt.
  retry(): void;
  close(): void;
}
