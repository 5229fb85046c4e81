/// Keys that work anywhere, and whether a field of program text has the focus.

import { signal } from '@preact/signals';
import type { App } from './core/app';
import { kOrder } from './panels';

export const shortcutsShown = signal(false);
/// A field of program text has the focus: the bar makes room for a keyboard.
export const editing = signal(false);

export function listenToKeys(app: App): void {
  document.addEventListener('keydown', (event) => {
    const digit = /^Digit([1-7])$/.exec(event.code)?.[1];
    if (event.altKey && !event.ctrlKey && !event.metaKey && digit) {
      const panel = kOrder[Number(digit) - 1]!;
      app.layout.show(panel);
      focusPanel(panel);
    } else if ((event.ctrlKey || event.metaKey) && event.key === '.') app.console.stop();
    else if (event.key === 'F6') nextPanel(app, event.shiftKey ? -1 : 1);
    else if (event.key === '?' && !isText(event.target)) shortcutsShown.value = true;
    else return;
    event.preventDefault();
  });
  const isEditing = () => document.activeElement?.classList.contains('cm-content') ?? false;
  const look = () => {
    editing.value = isEditing();
  };
  // A press elsewhere takes the focus away before it is a click; what it aims at must not move until then.
  let pressed = false;
  const later = () =>
    setTimeout(() => {
      if (!pressed) look();
    }, 60);
  document.addEventListener('focusin', () => (isEditing() ? look() : later()));
  document.addEventListener(
    'pointerdown',
    () => {
      pressed = true;
    },
    true,
  );
  for (const name of ['pointerup', 'pointercancel']) {
    document.addEventListener(
      name,
      () => {
        pressed = false;
        later();
      },
      true,
    );
  }
  document.addEventListener('focusout', later);
}

function isText(target: EventTarget | null): boolean {
  return (
    target instanceof HTMLElement &&
    (target.isContentEditable || target.matches('textarea, select, input:not([type=radio]):not([type=checkbox])'))
  );
}

/// Puts the focus into a panel: into its text field where it has one. A panel whose code is still on
/// its way is waited for.
function focusPanel(name: string, patience = 60): void {
  requestAnimationFrame(() => {
    const panel = document.querySelector(`[data-panel="${name}"]`);
    const kinds = ['.cm-content', 'canvas', '[tabindex="0"]', 'input', 'button:not(:disabled)'];
    const found = kinds.map((kind) => panel?.querySelector<HTMLElement>(kind)).find((each) => each);
    // Beside a keyboard a panel can be out of view: it comes back when the other field is left.
    if (found?.offsetParent === null) (document.activeElement as HTMLElement | null)?.blur();
    if (found?.offsetParent) found.focus();
    else if (patience > 0) focusPanel(name, patience - 1);
  });
}

function nextPanel(app: App, step: number): void {
  const panels = app.layout.visible.value;
  const here = (document.activeElement?.closest('[data-panel]') as HTMLElement | null)?.dataset.panel;
  const at = panels.findIndex((panel) => panel === here);
  focusPanel(panels[(at + step + panels.length) % panels.length]!);
}
