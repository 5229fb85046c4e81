/// Takes over what was typed into the plain field that stood there before the app.

export interface FirstText {
  text: string;
  anchor: number;
  head: number;
  focused: boolean;
}

/// Calls `receive` once, at once or when the input method has ended its word, with what stands in the
/// field; null when there is no such field any more. The field goes when `receive` returns.
export function takeFirstField(receive: (given: FirstText | null) => void): void {
  const field = document.querySelector<HTMLTextAreaElement>('#first textarea');
  if (!field) return receive(null);
  const hand = () => {
    receive({
      text: field.value,
      anchor: field.selectionStart,
      head: field.selectionEnd,
      focused: document.activeElement === field,
    });
    document.getElementById('first')!.remove();
  };
  if (field.dataset.composing === undefined) hand();
  else field.addEventListener('compositionend', hand, { once: true });
}
