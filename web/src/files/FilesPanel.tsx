import { useEffect, useRef } from 'preact/hooks';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import type { FileItem } from '../engine/core/protocol';
import { handOver } from '../design/clipboard';
import { Icon } from '../design/icons';
import { Empty, IconButton, type MenuItem, showMenu } from '../design/widgets';
import { isDirty, isProgram } from '../editor/core/editor';
import { text as t } from '../texts/texts';
import { baseOf, parentOf, sizeText, trail } from './core/names';
import { addExamples } from './examples';
import { pickFiles } from './picking';

export function FilesPanel() {
  const app = useApp();
  const { files } = app;
  const selecting = files.selecting.value;
  return (
    <Panel
      id="files"
      title={selecting ? t.files.selectedCount(files.selected.value.size) : t.shell.files}
      label={t.shell.files}
      actions={selecting ? <SelectionActions app={app} /> : <FolderActions app={app} />}
    >
      <Search app={app} />
      {files.hits.value ? <Hits app={app} /> : <Folder app={app} />}
      {files.progress.value && (
        <p class="files-progress" role="status">
          {files.progress.value}
        </p>
      )}
    </Panel>
  );
}

function FolderActions({ app }: { app: App }) {
  const { files } = app;
  const create = async () => {
    const path = await files.newFile();
    if (path && isProgram(path)) await app.openFile(path);
  };
  const sort = (event: MouseEvent | { x: number; y: number }) =>
    showMenu(
      event,
      t.files.sort,
      t.files.orders.map((label, order) => ({
        label,
        checked: files.sortedBy.value === order,
        onPick: () => void files.sort(order),
      })),
    );
  const more = (event: MouseEvent) => {
    const { right: x, bottom: y } = (event.currentTarget as Element).getBoundingClientRect();
    showMenu(event, t.files.more, [
      { label: t.files.addFile, icon: 'file', onPick: () => void create() },
      { label: t.files.addFolder, icon: 'newFolder', onPick: () => void files.newFolder() },
      { label: t.files.import, icon: 'save', onPick: () => void pickFiles().then((picked) => files.import(picked)) },
      { label: t.files.sort, icon: 'sort', divided: true, onPick: () => sort({ x, y }) },
      ...(app.layout.mode.value === 'phone'
        ? []
        : [{ label: t.files.resize, icon: 'resize' as const, onPick: () => app.layout.resizePanel('files') }]),
      {
        label: t.files.select,
        icon: 'select',
        disabled: !files.items.value?.length,
        onPick: () => files.select([], true),
      },
    ]);
  };
  return (
    <>
      <IconButton icon="plus" label={t.files.addFile} onClick={() => void create()} />
      <IconButton icon="more" label={t.files.more} onClick={more} />
    </>
  );
}

function SelectionActions({ app }: { app: App }) {
  const { files } = app;
  const paths = [...files.selected.value];
  const none = paths.length === 0;
  return (
    <>
      <IconButton
        icon="copy"
        label={t.files.copy}
        disabled={none}
        onClick={() => void files.copyOrMove('copy', paths)}
      />
      <IconButton
        icon="move"
        label={t.files.move}
        disabled={none}
        onClick={() => void files.copyOrMove('move', paths)}
      />
      <IconButton icon="clear" label={t.files.delete} disabled={none} onClick={() => void files.remove(paths)} />
      <button type="button" class="button plain" onClick={() => files.select([])}>
        {t.files.done}
      </button>
    </>
  );
}

function Search({ app }: { app: App }) {
  const timer = useRef(0);
  return (
    <label class="search-field">
      <Icon name="search" />
      <input
        type="search"
        class="field"
        placeholder={t.files.search}
        aria-label={t.files.search}
        value={app.files.query.value}
        onInput={(event) => {
          const query = event.currentTarget.value;
          clearTimeout(timer.current);
          timer.current = window.setTimeout(() => void app.files.search(query), 200);
        }}
      />
    </label>
  );
}

function Hits({ app }: { app: App }) {
  const hits = app.files.hits.value!;
  if (!hits.length) return <p class="files-note">{t.files.noHits}</p>;
  return (
    <ul class="hits" aria-label={t.files.search}>
      {hits.slice(0, 300).map((hit) => (
        <li key={`${hit.path}:${hit.line}:${hit.start}`}>
          <button type="button" onClick={() => void app.openFile(hit.path, hit.line)}>
            <b>{hit.path}</b>
            {hit.line > 0 && <span class="hit-line">{t.files.hit(hit.line)}</span>}
            {hit.line > 0 && <code>{hit.preview.slice(0, 200)}</code>}
          </button>
        </li>
      ))}
    </ul>
  );
}

function Folder({ app }: { app: App }) {
  const { files } = app;
  const items = files.items.value;
  useEffect(() => {
    if (!files.items.value) void files.reload();
  }, []);
  return (
    <div class="folder">
      {files.folder.value && <Way app={app} />}
      {!items ? (
        <p class="files-note" aria-busy="true">
          {t.files.loading}
        </p>
      ) : items.length === 0 ? (
        <Empty title={t.files.empty} text={files.isEmptyRoot.value ? t.files.emptyRootText : ''}>
          {files.isEmptyRoot.value && (
            <button type="button" class="button" onClick={() => void addExamples(app)}>
              {t.files.addExamples}
            </button>
          )}
        </Empty>
      ) : (
        <ul class="file-list" aria-label={t.files.list}>
          {items.map((item) => (
            <Row app={app} item={item} key={item.relativePath} />
          ))}
        </ul>
      )}
    </div>
  );
}

function Way({ app }: { app: App }) {
  const { files } = app;
  return (
    <nav class="way" aria-label={t.files.way}>
      <IconButton icon="back" label={t.files.up} onClick={() => void files.enter(parentOf(files.folder.value))} />
      <button type="button" onClick={() => void files.enter('')}>
        {t.files.root}
      </button>
      {trail(files.folder.value).map(({ name, path }) => (
        <button type="button" key={path} onClick={() => void files.enter(path)}>
          {name}
        </button>
      ))}
    </nav>
  );
}

function Row({ app, item }: { app: App; item: FileItem }) {
  const { files } = app;
  const path = item.relativePath;
  const name = baseOf(path);
  const open = app.editor.files.value.find((file) => file.path === path);
  const pick = () => {
    if (files.selecting.value) files.toggle(path);
    else if (item.isFolder) void files.enter(path);
    else void app.openFile(path);
  };
  const menu = (event: MouseEvent) => {
    event.preventDefault();
    showMenu(event, t.files.actionsFor(name), actionsFor(app, item));
  };
  return (
    <li
      class={`file-row${item.isFolder ? ' folder-row' : ''}${path === app.editor.activePath.value ? ' active' : ''}`}
      onContextMenu={menu}
    >
      <button type="button" class="file-name" onClick={pick}>
        {files.selecting.value ? (
          <input type="checkbox" tabIndex={-1} aria-label={name} checked={files.selected.value.has(path)} />
        ) : (
          <FileIcon item={item} />
        )}
        <span class="name">{name}</span>
        {open && isDirty(open) && <i class="dirty-dot" title={t.editor.unsaved} />}
        {item.size !== undefined && item.size !== null && <span class="size">{sizeText(item.size)}</span>}
      </button>
      {!files.selecting.value && <IconButton icon="more" label={t.files.actionsFor(name)} onClick={menu} />}
    </li>
  );
}

function FileIcon({ item }: { item: FileItem }) {
  if (item.isFolder) return <Icon name="files" />;
  return (
    <Icon name={isProgram(item.relativePath) ? 'editor' : /\.(csv|dat)$/.test(item.relativePath) ? 'table' : 'file'} />
  );
}

function actionsFor(app: App, item: FileItem): MenuItem[] {
  const { files } = app;
  const path = item.relativePath;
  const name = baseOf(path);
  const exportFile = async () => {
    const text = await files.read(path);
    if (text !== undefined)
      await handOver(name, 'text/plain', text).catch(() =>
        app.dialogs.alert(t.files.exportFailedTitle, t.files.exportFailed),
      );
  };
  return [
    ...(isProgram(path) && !item.isFolder
      ? [
          {
            label: t.files.run,
            icon: 'run' as const,
            disabled: app.console.busy.value,
            onPick: () => void app.runFile(path),
          },
        ]
      : []),
    { label: t.files.rename, icon: 'rename', onPick: () => void files.rename(path) },
    { label: t.files.duplicate, icon: 'duplicate', onPick: () => void files.duplicate([path]) },
    { label: t.files.copy, icon: 'copy', onPick: () => void files.copyOrMove('copy', [path]) },
    { label: t.files.move, icon: 'move', onPick: () => void files.copyOrMove('move', [path]) },
    ...(item.isFolder ? [] : [{ label: t.files.export, icon: 'export' as const, onPick: () => void exportFile() }]),
    { label: t.files.select, icon: 'select', divided: true, onPick: () => files.select([path]) },
    { label: t.files.delete, icon: 'clear', danger: true, divided: true, onPick: () => void files.remove([path]) },
  ];
}
