/// The file panel: one folder of the work directory, what is selected in it, and the actions with
/// their dialogs. The rules for names are the engine's; its alerts are shown as they come.

import { computed, signal } from '@preact/signals-core';
import type { FileItem, SearchHit } from '../../engine/core/protocol';
import { ConnectionLost, type Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';
import { text as t } from '../../texts/texts';
import { baseOf, isTextName, joined, parentOf, stemLength } from './names';

/// A file that was picked or dropped, before its content is read.
export interface Picked {
  name: string;
  size: number;
  isFolder: boolean;
  text(): Promise<string>;
}
const kLargestImport = 40_000_000;

export class Files {
  readonly folder = signal('');
  readonly items = signal<FileItem[] | null>(null);
  readonly sortedBy = signal(5);
  readonly selecting = signal(false);
  readonly selected = signal<ReadonlySet<string>>(new Set());
  readonly progress = signal('');
  readonly query = signal('');
  readonly hits = signal<SearchHit[] | null>(null);
  readonly isEmptyRoot = computed(() => this.folder.value === '' && this.items.value?.length === 0);
  private searches = 0;

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
    private readonly onMoved: (from: string, to: string | null) => void,
  ) {
    session.on('files/changed', ({ path }) => {
      if (path === this.folder.value) void this.reload();
    });
  }

  async enter(folder: string): Promise<void> {
    this.folder.value = folder;
    this.items.value = null;
    this.select([]);
    await this.reload();
  }

  async reload(): Promise<void> {
    const folder = this.folder.value;
    try {
      const { items, sortedBy } = await this.session.request('files/list', { path: folder });
      if (folder !== this.folder.value) return;
      this.items.value = items;
      this.sortedBy.value = sortedBy;
      const here = new Set(items.map((item) => item.relativePath));
      this.selected.value = new Set([...this.selected.value].filter((path) => here.has(path)));
    } catch (error) {
      if (error instanceof ConnectionLost) return;
      this.items.value = [];
      if (folder) await this.enter(parentOf(folder));
      else this.dialogs.fail(error);
    }
  }

  select(paths: string[], selecting = paths.length > 0): void {
    this.selected.value = new Set(paths);
    this.selecting.value = selecting;
  }

  toggle(path: string): void {
    const next = new Set(this.selected.value);
    if (!next.delete(path)) next.add(path);
    this.selected.value = next;
  }

  async sort(sortedBy: number): Promise<void> {
    await this.dialogs.guard(() => this.session.request('settings/set', { sortedBy }));
    await this.reload();
  }

  async newFile(): Promise<string | null> {
    const name = await this.dialogs.askText(t.files.newFile, t.files.newFileHint, t.files.create);
    if (name === null) return null;
    return this.made(() => this.session.request('files/newFile', { folder: this.folder.value, name }));
  }

  async newFolder(): Promise<string | null> {
    const name = await this.dialogs.askText(t.files.newFolder, t.files.newFolderHint, t.files.create);
    if (name === null) return null;
    return this.made(() => this.session.request('files/newFolder', { folder: this.folder.value, name }));
  }

  async rename(path: string): Promise<void> {
    const old = baseOf(path);
    const name = await this.dialogs.askText(t.files.rename, t.files.renameHint, t.files.rename, old, stemLength(old));
    if (name === null || name === old) return;
    const renamed = await this.made(() => this.session.request('files/rename', { path, name }));
    if (renamed !== null) this.onMoved(path, renamed);
  }

  async duplicate(paths: string[]): Promise<void> {
    if (!(await this.dialogs.confirm(t.files.duplicateTitle, t.files.named(paths), t.files.duplicate))) return;
    await this.work(t.files.duplicating, async () => {
      for (const path of paths) await this.session.request('files/duplicate', { path });
    });
  }

  async copyOrMove(action: 'copy' | 'move', paths: string[]): Promise<void> {
    const folders = await this.dialogs.guard(() => this.foldersFrom(''));
    if (!folders) return;
    const choices = [{ value: '', label: t.files.root }, ...folders.map((path) => ({ value: path, label: path }))];
    const title = action === 'copy' ? t.files.copyTitle : t.files.moveTitle;
    const folder = await this.dialogs.choose(title, t.files.named(paths), choices, t.files[action]);
    if (folder === null) return;
    await this.work(action === 'copy' ? t.files.copying : t.files.moving, async () => {
      const { paths: made } = await this.session.request(`files/${action}`, { paths, folder });
      if (action === 'move') paths.forEach((path, k) => this.onMoved(path, made[k] ?? joined(folder, baseOf(path))));
    });
  }

  async remove(paths: string[]): Promise<void> {
    if (!(await this.dialogs.confirm(t.files.deleteTitle, t.files.named(paths), t.files.delete, true))) return;
    await this.work('', async () => {
      await this.session.request('files/delete', { paths });
      paths.forEach((path) => this.onMoved(path, null));
    });
  }

  async import(picked: Picked[]): Promise<void> {
    for (const file of picked) await this.importOne(file);
  }

  refuseDrop(): void {
    void this.dialogs.alert(t.files.badDropTitle, t.files.badDrop);
  }

  async read(path: string): Promise<string | undefined> {
    return (await this.dialogs.guard(() => this.session.request('files/read', { path })))?.text;
  }

  /// Looks in names and contents; only the answer to the newest query counts.
  async search(query: string): Promise<void> {
    this.query.value = query;
    const mine = ++this.searches;
    if (!query.trim()) {
      this.hits.value = null;
      return;
    }
    const answer = await this.dialogs.guard(() => this.session.request('files/search', { text: query }));
    if (mine === this.searches) this.hits.value = answer?.items ?? null;
  }

  private async importOne(file: Picked): Promise<void> {
    const { name } = file;
    if (file.isFolder) return this.dialogs.alert(t.files.importAborted, t.files.importFolder(name));
    if (!isTextName(name)) return this.dialogs.alert(t.files.importAborted, t.files.importBinary(name));
    if (file.size > kLargestImport) return this.dialogs.alert(t.files.importAborted, t.files.importTooLarge(name));
    const question = t.files.importQuestion(name, this.folder.value || t.files.root);
    if (!(await this.dialogs.confirm(t.files.import, question, t.files.import))) return;
    await this.work(t.files.importing, async () => {
      let text: string;
      try {
        text = await file.text();
      } catch {
        return this.dialogs.alert(t.files.importAborted, t.files.importFailed(name));
      }
      await this.session.request('files/import', { folder: this.folder.value, name, text });
    });
  }

  private async foldersFrom(folder: string, depth = 0): Promise<string[]> {
    if (depth > 8) return [];
    const { items } = await this.session.request('files/list', { path: folder });
    const found: string[] = [];
    for (const item of items.filter((each) => each.isFolder)) {
      found.push(item.relativePath, ...(await this.foldersFrom(item.relativePath, depth + 1)));
    }
    return found;
  }

  private async made(request: () => Promise<{ path: string }>): Promise<string | null> {
    const answer = await this.dialogs.guard(request);
    if (answer) await this.reload();
    return answer?.path ?? null;
  }

  private async work(progress: string, action: () => Promise<unknown>): Promise<void> {
    this.progress.value = progress;
    await this.dialogs.guard(action);
    this.progress.value = '';
    this.select([]);
    await this.reload();
  }
}
