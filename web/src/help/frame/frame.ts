/// The script of the frame in which help pages are shown. The frame is sandboxed: it has no origin,
/// no storage and no session, and asks the app for what it needs.

import { coloredPieces } from '../../code/colorClass';
import type { Span } from '../../engine/core/protocol';
import { Marks } from './marks';
import type { FromFrame, ToFrame } from './messages';
import { pageNodes, setFormulas } from './pageContent';

const article = document.querySelector<HTMLElement>('.help-page')!;
const marks = new Marks(article);
const waiting = new Map<number, (value: unknown) => void>();
let asked = 0;

const tell = (message: FromFrame) => parent.postMessage(message, location.origin);
const tellFound = () => tell({ kind: 'found', at: marks.at, count: marks.count });

function ask<T>(what: 'picture' | 'colors', text: string): Promise<T> {
  return new Promise((resolve) => {
    waiting.set(++asked, resolve as (value: unknown) => void);
    tell({ kind: 'ask', id: asked, what, text });
  });
}

function showPage(html: string, tryIt: string): void {
  article.replaceChildren(pageNodes(html, { picture: (source) => ask<string | null>('picture', source) }));
  for (const pre of article.querySelectorAll<HTMLElement>('pre:has(code.language-matlab)')) dressCode(pre, tryIt);
  void setFormulas(article);
  marks.find('');
  tellFound();
  scrollTo(0, 0);
}

/// A code block gets its colours, and one that can be typed a button that does so.
function dressCode(pre: HTMLElement, tryIt: string): void {
  const text = pre.textContent ?? '';
  const holder = document.createElement('div');
  holder.className = `help-code ${pre.className}`.trim();
  pre.replaceWith(holder);
  pre.className = 'code-text';
  holder.append(pre);
  void ask<Span[]>('colors', text).then((spans) => {
    const pieces = coloredPieces(text, spans).map(({ text: piece, name }) => {
      const span = document.createElement('span');
      span.className = name ?? '';
      span.textContent = piece;
      return span;
    });
    pre.replaceChildren(...pieces);
  });
  if (!holder.classList.contains('input')) return;
  const button = document.createElement('button');
  button.className = 'try';
  button.ariaLabel = button.title = tryIt;
  button.onclick = () => tell({ kind: 'run', text });
  holder.append(button);
}

function look({ theme, motion, size }: { theme: string; motion: string; size: number }): void {
  document.documentElement.dataset.theme = theme;
  document.documentElement.dataset.motion = motion;
  article.style.fontSize = `${size}%`;
}

function take(message: ToFrame): void {
  switch (message.kind) {
    case 'look':
      return look(message);
    case 'page':
      return showPage(message.html, message.tryIt);
    case 'find':
      marks.find(message.text);
      return tellFound();
    case 'step':
      marks.step(message.by);
      return tellFound();
    case 'answer':
      waiting.get(message.id)?.(message.value);
      waiting.delete(message.id);
  }
}

addEventListener('message', (event) => {
  if (event.source === parent) take(event.data);
});
article.addEventListener('click', (event) => {
  const target = (event.target as Element).closest('a')?.getAttribute('href');
  if (!target) return;
  event.preventDefault();
  if (target.startsWith('#')) document.getElementById(target.slice(1))?.scrollIntoView();
  else tell({ kind: 'follow', href: target });
});
/// The app's own keys work here too.
addEventListener('keydown', ({ key, code, altKey, ctrlKey, metaKey, shiftKey }) => {
  if (altKey || ctrlKey || metaKey || key === 'F6' || key === '?')
    tell({ kind: 'key', key, code, altKey, ctrlKey, metaKey, shiftKey });
});
tell({ kind: 'ready' });
