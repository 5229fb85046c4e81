import { useEffect, useRef, useState } from 'preact/hooks';
import { useApp } from '../shell/context';
import { lazy } from '../design/lazy';

const Compare = lazy(() => import('./Compare'));

/// Shows the dialog that is asked for. The page's own dialog element holds the focus.
export function DialogHost() {
  const { dialogs } = useApp();
  const dialog = dialogs.current.value;
  const ref = useRef<HTMLDialogElement>(null);
  const [field, setField] = useState('');
  useEffect(() => {
    const element = ref.current;
    if (!dialog || !element) return;
    const opener = document.activeElement;
    setField(dialog.field?.value ?? dialog.choices?.[0]?.value ?? '');
    element.showModal();
    const input = element.querySelector<HTMLInputElement>('input.field');
    if (input && dialog.field) {
      input.value = dialog.field.value;
      input.focus();
      input.setSelectionRange(0, dialog.field.select ?? dialog.field.value.length);
    } else if (!dialog.compare) element.querySelector<HTMLElement>('.button.primary')?.focus();
    return () => {
      if (opener instanceof HTMLElement && opener.isConnected) opener.focus({ preventScroll: true });
    };
  }, [dialog]);
  if (!dialog) return null;

  const unusable = dialog.field !== undefined && field.trim() === '';
  const finish = (action: number) => dialog.answer({ action, field: field.trim() });
  return (
    <dialog
      key={dialog.title}
      class={`dialog${dialog.compare ? ' wide' : ''}`}
      ref={ref}
      aria-labelledby="dialog-title"
      onCancel={(event) => {
        event.preventDefault();
        dialog.answer(null);
      }}
    >
      <form
        onSubmit={(event) => {
          event.preventDefault();
          if (dialog.actions.length && !unusable) finish(0);
          else if (!dialog.actions.length) dialog.answer(null);
        }}
      >
        <h2 id="dialog-title">{dialog.title}</h2>
        {dialog.text && <p>{dialog.text}</p>}
        {dialog.field && (
          <input
            class="field"
            aria-label={dialog.field.label}
            placeholder={dialog.field.hint}
            value={field}
            autocomplete="off"
            autocapitalize="off"
            spellcheck={false}
            onInput={(event) => setField(event.currentTarget.value)}
          />
        )}
        {dialog.choices && <Choices choices={dialog.choices} value={field} onChange={setField} />}
        {dialog.compare && <Compare {...dialog.compare} />}
        <div class="dialog-actions">
          <button type="button" class="button" onClick={() => dialog.answer(null)}>
            {dialog.cancel}
          </button>
          {dialog.actions.map((action, k) => (
            <button
              type={k === 0 ? 'submit' : 'button'}
              class={`button ${action.danger ? 'danger' : k === 0 ? 'primary' : ''}`}
              disabled={unusable}
              onClick={k === 0 ? undefined : () => finish(k)}
            >
              {action.label}
            </button>
          ))}
        </div>
      </form>
    </dialog>
  );
}

function Choices(props: { choices: { value: string; label: string }[]; value: string; onChange(value: string): void }) {
  return (
    <div class="choices" role="radiogroup">
      {props.choices.map(({ value, label }) => (
        <label key={value}>
          <input type="radio" name="choice" checked={value === props.value} onChange={() => props.onChange(value)} />
          <span>{label}</span>
        </label>
      ))}
    </div>
  );
}
