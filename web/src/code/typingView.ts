/// A field that shows a letter before it works with it. The browser has drawn the letter in its place
/// anyway; reading it into the state, what follows from that, and measuring come behind the picture.
/// Whoever asks for the state, or changes it, has it with all that was typed.

import { EditorState, type Transaction } from '@codemirror/state';
import { EditorView } from '@codemirror/view';

/// The part of the view that reads what the browser has written. While `delayedFlush` is not negative
/// it waits for a picture with that number, unless it is told to read at once.
interface Reader {
  delayedFlush: number;
  forceFlush(): void;
}
/// There the browser draws nothing by itself.
const hasEditContext = (element: HTMLElement) => 'editContext' in element && !!element.editContext;
const readerOf = (view: EditorView) => (view as unknown as { observer?: Reader }).observer;

/// Brackets may bring others with them.
const kPlain = /^[^()[\]{}'"]$/;
const kOfSoftKeyboard = 'Unidentified';
const kModifiers = ['ctrlKey', 'altKey', 'metaKey'] as const;

/// After these the listeners must have told of all that was typed.
const kLeaving = ['pointerdown', 'pagehide'];

/// Calls `work` when the next picture has been drawn; gives the number of that picture.
export const behindPicture = (work: () => void): number => requestAnimationFrame(() => setTimeout(work));

export class TypingView extends EditorView {
  private putOff = false;
  private readonly gone = new AbortController();

  constructor(config: ConstructorParameters<typeof EditorView>[0]) {
    super(config);
    this.dom.addEventListener('keydown', (event) => this.begin(event), true);
    this.contentDOM.addEventListener('beforeinput', (event) => this.leave(event));
    const { signal } = this.gone;
    for (const type of kLeaving) window.addEventListener(type, () => this.state, { capture: true, signal });
  }

  override destroy(): void {
    this.gone.abort();
    super.destroy();
  }

  override get state(): EditorState {
    const reader = readerOf(this);
    if (reader && reader.delayedFlush >= 0) reader.forceFlush();
    return super.state;
  }

  override update(transactions: readonly Transaction[]): void {
    if (transactions.some((each) => each.scrollIntoView)) this.putOff = false;
    super.update(transactions);
  }

  override requestMeasure<T>(request?: Parameters<EditorView['requestMeasure']>[0] & T): void {
    if (request || !this.putOff) super.requestMeasure(request);
  }

  /// The field is not measured before the next picture, unless it must be scrolled.
  measureLater(): void {
    if (this.putOff) return;
    this.putOff = true;
    behindPicture(() => {
      this.putOff = false;
      this.requestMeasure();
    });
  }

  private begin(event: KeyboardEvent): void {
    const writes = event.key.length === 1 || event.key === kOfSoftKeyboard;
    if (writes && !kModifiers.some((modifier) => event[modifier])) this.measureLater();
    else if (this.putOff) {
      this.putOff = false;
      this.requestMeasure();
    }
  }

  /// Leaves a letter at the caret to the browser until it is drawn.
  private leave({ inputType, data, isComposing }: InputEvent): void {
    const isPlain = inputType === 'insertText' && data !== null && kPlain.test(data);
    const isComposed = isComposing || this.composing || this.compositionStarted;
    if (!isPlain || isComposed || hasEditContext(this.contentDOM)) return;
    const { doc, selection } = this.state;
    const reader = readerOf(this);
    if (!reader || doc.length === 0 || !selection.main.empty) return; // what stands for an empty text must go
    const picture = behindPicture(() => {
      if (reader.delayedFlush === picture) reader.forceFlush();
    });
    reader.delayedFlush = picture;
  }
}
