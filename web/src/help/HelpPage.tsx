/// One page, drawn in the app's own style: code in the engine's colours, examples that run, links
/// that stay inside, formulas as MathML.

import { useEffect, useRef } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import { render } from 'preact';
import type { App } from '../shell/core/app';
import { InputEcho } from '../console/InputEcho';
import { Icon } from '../design/icons';
import { IconButton } from '../design/widgets';
import { text as t } from '../texts/texts';
import { resolveLink } from './core/help';
import { markAll, pageNodes, setFormulas } from './pageContent';

export function HelpPage({ app, path }: { app: App; path: string }) {
  const article = useRef<HTMLElement>(null);
  const html = app.help.html.value;
  const size = app.settings.values.value?.docTextSize ?? 100;
  useEffect(() => {
    const root = article.current!;
    root.replaceChildren(
      pageNodes(html, {
        picture: (source) => app.help.picture(resolveLink(path, source)),
      }),
    );
    dressCode(app, root);
    void setFormulas(root);
    root.parentElement!.scrollTop = 0;
  }, [html]);
  useEffect(() => {
    article.current!.style.fontSize = `${size}%`;
  }, [size]);

  const follow = (event: MouseEvent) => {
    const link = (event.target as Element).closest('a');
    const target = link?.getAttribute('href');
    if (!target) return;
    const page = resolveLink(path, target);
    event.preventDefault();
    if (page) void app.help.open(page, size);
    else if (target.startsWith('#')) document.getElementById(target.slice(1))?.scrollIntoView();
    else if (/^https?:/.test(target)) open(target, '_blank', 'noopener,noreferrer');
  };
  return (
    <>
      <div class="help-scroll" tabIndex={0} role="region" aria-label={t.help.page}>
        <article class="help-page" ref={article} onClick={follow} />
      </div>
      <FindInPage root={() => article.current!} html={html} />
    </>
  );
}

/// Code blocks get their colours, and those that can be typed a button that does so.
function dressCode(app: App, root: HTMLElement): void {
  for (const pre of root.querySelectorAll('pre')) {
    const code = pre.querySelector('code');
    if (!code || !/language-matlab/.test(code.className)) continue;
    const text = code.textContent ?? '';
    const holder = document.createElement('div');
    holder.className = pre.className ? `help-code ${pre.className}` : 'help-code';
    pre.replaceWith(holder);
    const runs = pre.classList.contains('input');
    render(
      <>
        <InputEcho app={app} text={text} />
        {runs && (
          <button
            type="button"
            class="try"
            aria-label={t.help.tryIt}
            title={t.help.tryIt}
            onClick={() => app.runText(text)}
          >
            <Icon name="run" />
          </button>
        )}
      </>,
      holder,
    );
  }
}

function FindInPage({ root, html }: { root(): HTMLElement; html: string }) {
  const query = useSignal('');
  const marks = useSignal<HTMLElement[]>([]);
  const at = useSignal(0);
  useEffect(() => {
    find('');
  }, [html]);
  const show = (index: number) => {
    marks.value[at.value]?.classList.remove('current');
    at.value = (index + marks.value.length) % Math.max(1, marks.value.length);
    const mark = marks.value[at.value];
    mark?.classList.add('current');
    mark?.scrollIntoView({ block: 'center' });
  };
  const find = (text: string) => {
    query.value = text;
    marks.value = markAll(root(), text);
    at.value = 0;
    if (marks.value.length) show(0);
  };
  const count = marks.value.length;
  return (
    <div class="find-bar">
      <input
        class="field small"
        type="search"
        placeholder={t.help.inPage}
        aria-label={t.help.inPage}
        value={query.value}
        onInput={(event) => find(event.currentTarget.value)}
        onKeyDown={(event) => {
          if (event.key === 'Enter') show(at.value + (event.shiftKey ? -1 : 1));
        }}
      />
      <span role="status">{query.value && (count ? t.help.foundAt(at.value + 1, count) : t.help.found(0))}</span>
      <IconButton icon="up" label={t.help.previousMatch} disabled={!count} onClick={() => show(at.value - 1)} />
      <IconButton icon="down" label={t.help.nextMatch} disabled={!count} onClick={() => show(at.value + 1)} />
    </div>
  );
}
