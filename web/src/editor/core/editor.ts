/// The open files: their texts, what is unsaved, where errors stand, and what a save does when
/// there is a conflict. The text that is being typed stands in the view; `changed` brings it here.

import { computed, signal } from '@preact/signals-core';
import type { Clock, Store } from '../../engine/core/ports';
import type { ConsoleItem } from '../../engine/core/protocol';
import { EngineError, type Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';
import { text as t } from '../../texts/texts';
import { Drafts } from './drafts';

const kLargestFile = 10_000_000;
const kDraftDelay = 400;

export interface Mark {
  line: number;
  text: string;
  warning: boolean;
}
export interface OpenFile {
  path: string;
  text: string;
  savedText: string;
  revision: string;
  marks: Mark[];
}
/// A wish to show a place; `count` tells two wishes for one place apart.
export interface Goto {
  path: string;
  line: number;
  column: number;
  count: number;
}

export const nameOf = (path: string) => path.slice(path.lastIndexOf('/') + 1);
const folderOf = (path: string) => path.slice(0, Math.max(0, path.lastIndexOf('/')));
export const isProgram = (path: string) => path.endsWith('.m');
export const isDirty = (file: OpenFile) => file.text !== file.savedText;

export class Editor {
  readonly files = signal<OpenFile[]>([]);
  readonly activePath = signal<string | null>(null);
  readonly active = computed(() => this.files.value.find((file) => file.path === this.activePath.value) ?? null);
  readonly goto = signal<Goto | null>(null);
  /// Counts the times that a file's text was replaced from outside the view.
  readonly replaced = signal(0);
  private readonly drafts: Drafts;
  private readonly pendingDrafts = new Map<string, () => void>();
  private gotos = 0;

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
    private readonly clock: Clock,
    store: Store,
  ) {
    this.drafts = new Drafts(store);
    session.on('console/item', (item) => this.mark(item));
    session.on('run/state', ({ status }) => {
      if (status === 'running') this.runBegins();
    });
    session.on('files/changed', ({ path }) => {
      for (const file of this.files.value) if (folderOf(file.path) === path) void this.follow(file.path);
    });
  }

  /// Opens what was open when the page was left, with the drafts of it.
  async restore(): Promise<void> {
    if (this.files.value.length) return;
    const { paths, active } = this.drafts.openFiles;
    for (const path of paths) await this.load(path).catch(() => this.offerLostDraft(path));
    if (active && this.find(active)) this.activePath.value = active;
  }

  /// Opens a file, or brings it to the front, and goes to the line when one is given. `size` in bytes,
  /// where it is known: a file that is too large is not even read.
  async open(path: string, line = 0, column = 1, size = 0): Promise<boolean> {
    if (size > kLargestFile) {
      await this.dialogs.alert(t.editor.tooLargeTitle, t.editor.tooLarge(nameOf(path)));
      return false;
    }
    const opened = this.find(path) ?? (await this.dialogs.guard(() => this.load(path)));
    if (!opened) return false;
    this.activePath.value = path;
    if (line > 0) this.goto.value = { path, line, column, count: ++this.gotos };
    this.remember();
    return true;
  }

  /// The text was changed in the view.
  changed(path: string, text: string): void {
    const file = this.find(path);
    if (!file || file.text === text) return;
    const wasDirty = isDirty(file);
    file.text = text;
    if (wasDirty !== isDirty(file) || file.marks.length) this.update(path, { text });
    this.pendingDrafts.get(path)?.();
    this.pendingDrafts.set(
      path,
      this.clock.after(kDraftDelay, () => this.keepDraft(path)),
    );
  }

  async save(path: string): Promise<boolean> {
    const file = this.find(path);
    if (!file) return false;
    const text = file.text;
    try {
      const { revision } = await this.session.request('files/write', { path, text, revision: file.revision });
      this.saved(path, text, revision);
      return true;
    } catch (error) {
      if (error instanceof EngineError && error.isAlert && (await this.isStale(file))) return this.resolve(file, text);
      this.dialogs.fail(error);
      return false;
    }
  }

  /// Closes a tab; an unsaved text is asked about first.
  async close(path: string): Promise<void> {
    const file = this.find(path);
    if (!file) return;
    if (isDirty(file)) {
      const answer = await this.dialogs.ask({
        title: t.editor.closeTitle,
        text: t.editor.closeText(nameOf(path)),
        actions: [{ label: t.editor.save }, { label: t.editor.discard, danger: true }],
        cancel: t.dialogs.cancel,
      });
      if (!answer || (answer.action === 0 && !(await this.save(path)))) return;
    }
    this.forget(path);
  }

  /// Files were renamed, moved or deleted; `to` null for deleted.
  moved(from: string, to: string | null): void {
    for (const file of this.files.value) {
      if (file.path !== from && !file.path.startsWith(`${from}/`)) continue;
      const path = file.path;
      if (to === null) {
        this.forget(path);
        continue;
      }
      const target = to + path.slice(from.length);
      this.drafts.remove(path);
      if (this.activePath.value === path) this.activePath.value = target;
      this.update(path, { path: target });
    }
    this.remember();
  }

  /// Keeps all drafts now, since the page may end. False when one could not be kept.
  keepAll(): boolean {
    return this.files.value.map((file) => this.keepDraft(file.path)).every((kept) => kept);
  }

  private find(path: string): OpenFile | undefined {
    return this.files.value.find((file) => file.path === path);
  }

  private async load(path: string): Promise<OpenFile> {
    const { text, revision } = await this.session.request('files/read', { path });
    if (text.length > kLargestFile) throw new EngineError(1, t.editor.tooLargeTitle, t.editor.tooLarge(nameOf(path)));
    const known = this.find(path);
    if (known) return known;
    const draft = this.drafts.get(path);
    const useDraft = draft !== null && draft.text !== text;
    if (draft && !useDraft) this.drafts.remove(path);
    const file: OpenFile = {
      path,
      text: useDraft ? draft.text : text,
      savedText: text,
      marks: [],
      // A draft begun from an older revision must meet the conflict when it is saved.
      revision: useDraft ? draft.revision : revision,
    };
    this.files.value = [...this.files.value, file];
    this.activePath.value ??= path;
    this.remember();
    if (useDraft) this.offerDraft(path, text, revision);
    return file;
  }

  private offerDraft(path: string, text: string, revision: string): void {
    this.dialogs.say(t.editor.draftFound(nameOf(path)), t.editor.draftDrop, () => {
      this.drafts.remove(path);
      this.update(path, { text, savedText: text, revision });
      this.replaced.value++;
    });
  }

  private offerLostDraft(path: string): void {
    const draft = this.drafts.get(path);
    if (!draft) return;
    this.files.value = [...this.files.value, { path, text: draft.text, savedText: '', revision: '', marks: [] }];
  }

  /// Takes over what another window or program has made of a file; unsaved text meets it at the save.
  private async follow(path: string): Promise<void> {
    const before = this.find(path);
    if (!before || isDirty(before)) return;
    const found = await this.session.request('files/read', { path }).catch(() => null);
    const file = this.find(path);
    if (!found || !file || isDirty(file) || file.revision !== before.revision) return;
    if (found.revision === file.revision || found.text.length > kLargestFile) return;
    this.update(path, { text: found.text, savedText: found.text, revision: found.revision });
    if (found.text !== file.text) this.replaced.value++;
  }

  private async isStale(file: OpenFile): Promise<boolean> {
    try {
      return (await this.session.request('files/read', { path: file.path })).revision !== file.revision;
    } catch {
      return false;
    }
  }

  private async resolve(file: OpenFile, mine: string): Promise<boolean> {
    const theirs = await this.session.request('files/read', { path: file.path });
    const answer = await this.dialogs.ask({
      title: t.editor.conflictTitle,
      text: t.editor.conflictText(nameOf(file.path)),
      compare: { leftTitle: t.editor.mine, left: mine, rightTitle: t.editor.theirs, right: theirs.text },
      actions: [{ label: t.editor.keepMine }, { label: t.editor.keepTheirs }],
      cancel: t.dialogs.cancel,
    });
    if (!answer) return false;
    if (answer.action === 0) {
      this.update(file.path, { revision: theirs.revision });
      return this.save(file.path);
    }
    this.update(file.path, { text: theirs.text });
    this.saved(file.path, theirs.text, theirs.revision);
    this.replaced.value++;
    return true;
  }

  private saved(path: string, text: string, revision: string): void {
    this.pendingDrafts.get(path)?.();
    this.pendingDrafts.delete(path);
    this.update(path, { savedText: text, revision });
    const file = this.find(path);
    if (file && isDirty(file)) this.keepDraft(path);
    else this.drafts.remove(path);
  }

  private keepDraft(path: string): boolean {
    const file = this.find(path);
    if (!file) return true;
    this.pendingDrafts.get(path)?.();
    this.pendingDrafts.delete(path);
    if (isDirty(file)) return this.drafts.put(path, { text: file.text, revision: file.revision });
    this.drafts.remove(path);
    return true;
  }

  private forget(path: string): void {
    this.pendingDrafts.get(path)?.();
    this.pendingDrafts.delete(path);
    this.drafts.remove(path);
    const at = this.files.value.findIndex((file) => file.path === path);
    this.files.value = this.files.value.filter((file) => file.path !== path);
    if (this.activePath.value === path) {
      this.activePath.value = this.files.value[Math.min(at, this.files.value.length - 1)]?.path ?? null;
    }
    this.remember();
  }

  private update(path: string, change: Partial<OpenFile>): void {
    this.files.value = this.files.value.map((file) => (file.path === path ? Object.assign({}, file, change) : file));
  }

  private mark(item: ConsoleItem): void {
    const { file, line, warning } = item.message ?? {};
    if (!file || !line) return;
    const open = this.files.value.find((each) => each.path === file || nameOf(each.path) === file);
    if (!open) return;
    this.update(open.path, { marks: [...open.marks, { line, text: item.text, warning: warning === true }] });
  }

  private runBegins(): void {
    if (this.files.value.some((file) => file.marks.length)) {
      this.files.value = this.files.value.map((file) => (file.marks.length ? { ...file, marks: [] } : file));
    }
  }

  private remember(): void {
    this.drafts.openFiles = { paths: this.files.value.map((file) => file.path), active: this.activePath.value };
  }
}
