/// The page before the app: its theme, and the plain field that takes what is typed at once. The app
/// is fetched behind the first picture, since its start would hold that up.

import { readPreferences } from '../settings/core/preferenceValues';
import { first as t } from '../texts/first';

const kLongestWait = 300;
const app = document.currentScript!.dataset.app!;
const coarse = matchMedia('(pointer: coarse)').matches;

function stored(): string | null {
  try {
    return localStorage.getItem('kelo.preferences');
  } catch {
    return null;
  }
}

const { theme, motion, codeSize, keyboard } = readPreferences(stored());
const root = document.documentElement;
const dark = theme === 'auto' ? matchMedia('(prefers-color-scheme: dark)').matches : theme === 'dark';
root.dataset.theme = dark ? 'dark' : 'light';
root.dataset.motion = motion;
root.style.setProperty('--code-scale', String(codeSize / 100));

function dressField(): void {
  const field = document.querySelector<HTMLTextAreaElement>('#first textarea')!;
  field.ariaLabel = t.input;
  field.placeholder = t.placeholder;
  if (keyboard === 'own' || (keyboard === 'auto' && coarse)) field.inputMode = 'none';
  field.addEventListener('compositionstart', () => {
    field.dataset.composing = '';
  });
  field.addEventListener('compositionend', () => {
    delete field.dataset.composing;
  });
  if (!coarse) field.focus();
  load(field);
}

/// Once, behind the first picture; a page that is not in view has none.
function load(field: HTMLTextAreaElement): void {
  let begun = false;
  const begin = () => {
    if (begun) return;
    begun = true;
    import(app).catch(() => {
      field.placeholder = t.failed;
      field.value = '';
    });
  };
  requestAnimationFrame(() => requestAnimationFrame(() => setTimeout(begin)));
  setTimeout(begin, kLongestWait);
}

document.addEventListener('DOMContentLoaded', dressField);
