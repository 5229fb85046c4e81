/// The help browser: the tree of pages, the page shown and the way back, and the search.

import { signal } from '@preact/signals-core';
import type { DocFile, DocHit } from '../../engine/core/protocol';
import type { Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';

export type Scope = 'title' | 'content';

export class Help {
  readonly files = signal<DocFile[] | null>(null);
  readonly path = signal<string | null>(null);
  readonly html = signal('');
  readonly scope = signal<Scope>('title');
  readonly query = signal('');
  readonly hits = signal<DocHit[] | 'searching' | null>(null);
  readonly openFolders = signal<ReadonlySet<string>>(new Set());
  private readonly trail: string[] = [];
  private searches = 0;

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
  ) {}

  async loadTree(): Promise<void> {
    if (this.files.value) return;
    this.files.value = (await this.dialogs.guard(() => this.session.request('docs/tree', {})))?.files ?? null;
  }

  async open(relativePath: string, textSize = 100): Promise<void> {
    const answer = await this.dialogs.guard(() =>
      this.session.request('docs/page', {
        relativePath,
        style: 'auto',
        textSize,
      }),
    );
    if (this.path.value && this.path.value !== relativePath) this.trail.push(this.path.value);
    this.path.value = relativePath;
    this.html.value = answer?.html ?? ''; // a page that cannot be read stays blank
  }

  /// The page of a built-in function, if it has one.
  async openName(name: string): Promise<boolean> {
    const answer = await this.dialogs.guard(() => this.session.request('docs/name', { name }));
    if (!answer) return false;
    await this.open(answer.relativePath);
    return true;
  }

  /// The SVG text of a picture of a page; null for one that cannot be had.
  async picture(relativePath: string | null): Promise<string | null> {
    if (relativePath === null) return null;
    return (await this.session.request('docs/picture', { relativePath }).catch(() => null))?.svg ?? null;
  }

  back(): void {
    const previous = this.trail.pop();
    this.path.value = null;
    if (previous) void this.open(previous);
  }

  toContents(): void {
    this.trail.length = 0;
    this.path.value = null;
  }

  toggleFolder(path: string): void {
    const next = new Set(this.openFolders.value);
    if (!next.delete(path)) next.add(path);
    this.openFolders.value = next;
  }

  async search(text: string, scope: Scope = this.scope.value): Promise<void> {
    this.query.value = text;
    this.scope.value = scope;
    const mine = ++this.searches;
    if (!text.trim()) {
      this.hits.value = null;
      return;
    }
    this.hits.value = 'searching';
    const answer = await this.dialogs.guard(() => this.session.request('docs/search', { scope, text }));
    if (mine === this.searches) this.hits.value = answer?.items ?? [];
  }
}

/// The folder part of a page's path, and a link of a page made whole; null for one that leaves the
/// help pages.
export function resolveLink(from: string, link: string): string | null {
  if (/^[a-z]+:/i.test(link) || link.startsWith('//') || link.startsWith('#')) return null;
  const path = decodeURIComponent(link.replace(/[#?].*$/, ''));
  const parts = path.startsWith('/') ? [] : from.split('/').slice(0, -1);
  for (const part of path.split('/')) {
    if (part === '..') {
      if (!parts.length) return null;
      parts.pop();
    } else if (part && part !== '.') parts.push(part);
  }
  return parts.join('/');
}
