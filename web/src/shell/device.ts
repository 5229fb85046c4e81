/// The device as the app sees it: storage, clock, theme, and the size of what is visible when the
/// system's keyboard covers a part of it.

import { effect, signal } from '@preact/signals';
import type { Clock, Store } from '../engine/core/ports';
import type { Theme } from '../engine/core/protocol';
import type { App } from './core/app';

const kPrefix = 'kelo.';

/// Storage that may be missing or full: reads then give nothing and writes are refused.
const storeIn = (place: () => Storage): Store => ({
  read(key) {
    try {
      return place().getItem(kPrefix + key);
    } catch {
      return null;
    }
  },
  write(key, text) {
    try {
      place().setItem(kPrefix + key, text);
      return true;
    } catch {
      return false;
    }
  },
  remove(key) {
    try {
      place().removeItem(kPrefix + key);
    } catch {
      /* nothing is kept then */
    }
  },
});
/// Outlives the page.
export const deviceStore = storeIn(() => localStorage);
/// Outlives a reload, and belongs to this window alone.
export const windowStore = storeIn(() => sessionStorage);

export const deviceClock: Clock = {
  now: () => performance.now(),
  after(milliseconds, work) {
    const timer = setTimeout(work, milliseconds);
    return () => clearTimeout(timer);
  },
  nextFrame: (work) => {
    requestAnimationFrame(work);
  },
};

export const theme = signal<Theme>('light');

export function followPreferences(app: App): void {
  const dark = matchMedia('(prefers-color-scheme: dark)');
  const systemDark = signal(dark.matches);
  dark.addEventListener('change', () => {
    systemDark.value = dark.matches;
  });
  effect(() => {
    const { theme: wanted, motion, codeSize } = app.preferences.value.value;
    theme.value = wanted === 'auto' ? (systemDark.value ? 'dark' : 'light') : wanted;
    const root = document.documentElement;
    root.dataset.theme = theme.value;
    root.dataset.motion = motion;
    root.style.setProperty('--code-scale', String(codeSize / 100));
    const color = getComputedStyle(root).getPropertyValue('--ground').trim();
    document.querySelectorAll('meta[name="theme-color"]').forEach((meta) => meta.setAttribute('content', color));
  });
}

/// Keeps the app as large as what can be seen. A pinch of the page changes nothing.
export function followSize(app: App): void {
  const viewport = window.visualViewport;
  let width = 0;
  const measure = () => {
    if (viewport && Math.abs(viewport.scale - 1) > 0.01) return;
    const height = viewport?.height ?? innerHeight;
    document.documentElement.style.setProperty('--app-height', `${height}px`);
    // A keyboard lowers the height only; the arrangement is by the height without it.
    if (innerWidth !== width || height > innerHeight * 0.75)
      app.layout.resize(innerWidth, Math.max(height, innerHeight));
    width = innerWidth;
    scrollTo(0, 0);
  };
  viewport?.addEventListener('resize', measure);
  viewport?.addEventListener('scroll', measure);
  addEventListener('resize', measure);
  measure();
}
