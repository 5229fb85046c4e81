/// Which keyboard a field of program text asks for, by the setting and the device.

import { signal } from '@preact/signals';
import type { App } from '../shell/core/app';

const coarse = window.matchMedia('(pointer: coarse)');
export const isTouch = signal(coarse.matches);
coarse.addEventListener('change', () => {
  isTouch.value = coarse.matches;
});

export function ownKeyboardWanted(app: App): boolean {
  const { keyboard } = app.preferences.value.value;
  return keyboard === 'own' || (keyboard === 'auto' && isTouch.value);
}
