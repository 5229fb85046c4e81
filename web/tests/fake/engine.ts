/// An engine in memory for tests: the protocol's shape with a small stock of commands. It computes
/// nothing; what is asked of it beyond the stock is echoed as a value.

import type { CarrierState, Engine } from '../../src/engine/core/engine';
import type { ConsoleItem, FileItem, RunStatus, Settings, Span, Variable } from '../../src/engine/core/protocol';
import { drawingOf, exampleModel } from './drawing';
import { kDocs, docPage } from './docs';
import { keyboardLayouts, pressKey } from './keyboard';

class Alert extends Error {
  constructor(
    readonly title: string,
    readonly text = '',
  ) {
    super(title);
  }
}

interface State {
  items: ConsoleItem[];
  history: string[];
  status: RunStatus;
  files: Map<string, string | null>;
  variables: Variable[];
  settings: Settings;
  model: Record<string, unknown> | null;
  revision: number;
  answer: ((text: string) => void) | null;
  saved: { id: string; name: string; timeStamp: number; thumbnail: string }[];
}

const kPixel = 'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAABJRU5ErkJggg==';
const kBuiltIns = [
  'abs',
  'linspace',
  'mean',
  'median',
  'plot',
  'rand',
  'sin',
  'sqrt',
  'sum',
  'surf',
  'zeros',
  'ones',
  'disp',
  'numel',
];

export class FakeSession {
  readonly state: State = {
    items: [],
    history: [],
    status: 'idle',
    files: new Map(),
    variables: [],
    model: null,
    revision: 0,
    answer: null,
    saved: [],
    settings: {
      numDigitIndex: 0,
      showWarning: true,
      sortedBy: 5,
      consoleCells: 80,
      docTextSize: 100,
      docStyle: 'auto',
    },
  };
  readonly requests: { method: string; params: Record<string, never> }[] = [];
  answerPress = pressKey;
  private readonly clients = new Set<(text: string) => void>();

  join(send: (text: string) => void): () => void {
    this.clients.add(send);
    return () => this.clients.delete(send);
  }

  notify(method: string, params: unknown): void {
    const text = JSON.stringify({ jsonrpc: '2.0', method, params });
    this.clients.forEach((send) => send(text));
  }

  async receive(text: string, send: (text: string) => void): Promise<void> {
    const { id, method, params } = JSON.parse(text);
    this.requests.push({ method, params });
    const handler = this.methods[method];
    let body: object;
    try {
      if (!handler) throw Object.assign(new Error(`unknown method ${method}`), { code: -32601 });
      body = { result: await handler(params) };
    } catch (error) {
      const { title, text: detail } = error as Alert;
      body = {
        error:
          error instanceof Alert
            ? { code: 1, message: title, data: { title, text: detail } }
            : { code: (error as { code?: number }).code ?? -32602, message: String((error as Error).message) },
      };
    }
    send(JSON.stringify({ jsonrpc: '2.0', id, ...body }));
  }

  add(item: Omit<ConsoleItem, 'index'>): void {
    const full = { index: this.state.items.length, ...item };
    this.state.items.push(full);
    this.notify('console/item', full);
  }

  setStatus(status: RunStatus): void {
    this.state.status = status;
    this.notify('run/state', { status });
  }

  private async run(text: string, file = ''): Promise<{ status: string; seconds: number }> {
    const { state } = this;
    if (!file) this.add({ contentType: 'inputText', text });
    if (!file && state.history[state.history.length - 1] !== text) state.history.push(text);
    this.setStatus('running');
    let status = 'done';
    for (const line of text.split('\n')) status = (await this.line(line.trim(), file)) ?? status;
    this.setStatus('idle');
    this.notify('workspace/changed', {});
    return { status, seconds: 0.0123 };
  }

  private async line(line: string, file: string): Promise<string | undefined> {
    const { state } = this;
    if (/^(plot|surf|stem)\(/.test(line)) {
      state.model = exampleModel(line.startsWith('surf') ? 'surface' : 'plot');
      this.changeFigure();
    } else if (/nosuch/.test(line)) {
      const where = file ? file.slice(file.lastIndexOf('/') + 1) : 'the console';
      this.add({
        contentType: 'error',
        text: `Error at Line 2(5) of ${where}. Variable or function named "nosuch" not found.\n    y = 2*nosuch\n          ^`,
        message: { file: file || null, line: file ? 2 : 1, column: 5 },
      });
      return 'failed';
    } else if (line.startsWith('input(')) {
      this.notify('console/prompt', { text: 'How many?' });
      this.setStatus('waitInput');
      const answer = await new Promise<string>((resolve) => {
        state.answer = resolve;
      });
      this.setStatus('running');
      this.add({ contentType: 'doubleArray', varName: 'ans', text: `ans = \n ${answer}` });
    } else if (line.startsWith('pause(')) {
      this.setStatus('paused');
      await new Promise<string>((resolve) => {
        state.answer = resolve;
      });
      this.setStatus('running');
    } else if (line === 'forever') {
      await new Promise<string>((resolve) => {
        state.answer = resolve;
      });
    } else if (/^many\(/.test(line)) {
      for (let k = 0; k < Number(/\d+/.exec(line)![0]); k++)
        this.add({ contentType: 'doubleArray', text: `k = \n ${k}` });
    } else if (/^\w+ ?= ?magic/.test(line)) {
      const text = ' 16    2    3   13\n  5   11   10    8\n  9    7    6   12\n  4   14   15    1';
      state.variables = [
        ...state.variables.filter((v) => v.name !== 'A'),
        { name: 'A', class: 'double', size: [4, 4], bytes: 128, preview: '16 2 3 13; 5 11 10 8; …' },
      ];
      this.add({ contentType: 'doubleArray', varName: 'A', text: `A = \n${text}` });
    } else if (line && !line.endsWith(';') && !line.startsWith('%')) {
      const name = /^(\w+) ?=/.exec(line)?.[1] ?? 'ans';
      state.variables = [
        ...state.variables.filter((v) => v.name !== name),
        { name, class: 'double', size: [1, 3], bytes: 24, preview: '1.0000 1.5000 1.8333' },
      ];
      this.add({ contentType: 'doubleArray', varName: name, text: `${name} = \n 1.0000   1.5000   1.8333` });
    }
    return undefined;
  }

  changeFigure(): void {
    this.state.revision++;
    this.notify('figure/changed', { kind: this.kind, revision: this.state.revision });
  }
  private get kind() {
    return !this.state.model ? 'none' : 'surfaces' in this.state.model ? 'surface' : 'plot';
  }
  private get figure() {
    return { kind: this.kind, model: this.state.model, revision: this.state.revision };
  }

  private file(path: string): string {
    const text = this.state.files.get(path);
    if (typeof text !== 'string') throw new Alert(`Failed to load "${path}"`);
    return text;
  }

  private list(path: string): FileItem[] {
    const inside = path ? `${path}/` : '';
    return [...this.state.files]
      .filter(([name]) => name.startsWith(inside) && name !== path && !name.slice(inside.length).includes('/'))
      .sort(([a], [b]) => a.localeCompare(b))
      .map(([relativePath, text]) => ({
        id: relativePath,
        relativePath,
        isFolder: text === null,
        size: text?.length ?? null,
      }));
  }

  private make(folder: string, name: string, content: string | null): { path: string } {
    if (!/^[A-Za-z][A-Za-z0-9_]*(\.(m|csv|txt|dat))?$/.test(name)) {
      throw new Alert(
        'Invalid File Name',
        'Only letters, numbers, and underscore are allowed in a file name. A valid name cannot start with a number or underscore.',
      );
    }
    const path = folder ? `${folder}/${name}` : name;
    this.state.files.set(path, content);
    this.notify('files/changed', { path: folder });
    return { path };
  }

  private readonly methods: Record<string, (params: any) => unknown> = {
    'session/open': () => ({
      version: '1.0',
      protocol: 1,
      workDir: '/home/ada/Kelo',
      workDirDisplayText: '~/Kelo',
      settings: this.state.settings,
      runState: this.state.status,
    }),
    'settings/get': () => this.state.settings,
    'settings/set': (change) => Object.assign(this.state.settings, change),
    'console/run': ({ text }) => this.run(text),
    'file/run': ({ path }) => this.run(this.file(path), path),
    'run/stop': () => {
      this.state.answer?.('');
      return {};
    },
    'console/answer': ({ text }) => {
      this.state.answer?.(text);
      this.state.answer = null;
      return {};
    },
    'console/items': () => ({ items: this.state.items }),
    'console/clear': () => {
      this.state.items = [];
      this.notify('console/cleared', {});
      return {};
    },
    'console/history': () => ({ items: this.state.history }),
    'console/complete': ({ text, position }) => {
      const word = /[A-Za-z_]\w*$/.exec(text.slice(0, position))?.[0] ?? '';
      return {
        from: position - word.length,
        items: kBuiltIns
          .filter((name) => word && name.startsWith(word))
          .map((label) => ({ label, kind: 'function', detail: `${label}(...)` })),
      };
    },
    'console/isComplete': ({ text }) => ({
      complete: (text.match(/\b(for|if|while)\b/g) ?? []).length <= (text.match(/\bend\b/g) ?? []).length,
    }),
    'workspace/list': () => ({ variables: [...this.state.variables].sort((a, b) => a.name.localeCompare(b.name)) }),
    'workspace/show': ({ name }) => {
      const item = [...this.state.items].reverse().find((each) => each.varName === name);
      if (!item) throw new Error('no such variable');
      return { text: item.text };
    },
    'editor/highlight': ({ text }) => ({ spans: colors(text) }),
    'editor/indentedLine': ({ text, position }) => {
      const before = text.slice(0, position).split('\n');
      const line = text.split('\n')[before.length - 1].trimStart();
      const depth =
        before
          .slice(0, -1)
          .join(' ')
          .split(/\b(?:for|if|while|switch)\b/).length -
        before
          .slice(0, -1)
          .join(' ')
          .split(/\bend\b/).length;
      return { line: ' '.repeat(4 * Math.max(0, depth - (/^(end|else)/.test(line) ? 1 : 0))) + line };
    },
    'editor/comment': (s) => ({
      ...s,
      text:
        s.text.slice(0, s.text.lastIndexOf('\n', s.start - 1) + 1) +
        '% ' +
        s.text.slice(s.text.lastIndexOf('\n', s.start - 1) + 1),
    }),
    'editor/uncomment': (s) => s,
    'editor/indent': (s) => s,
    'keyboard/layouts': () => keyboardLayouts,
    'keyboard/press': (params) => this.answerPress(params),
    'files/list': ({ path }) => ({ path, sortedBy: this.state.settings.sortedBy, items: this.list(path) }),
    'files/newFile': ({ folder, name }) =>
      this.make(folder, name, `%% ${name.replace(/\..*/, '')}\n%% Enter your code here.\n`),
    'files/newFolder': ({ folder, name }) => this.make(folder, name, null),
    'files/import': ({ folder, name, text }) => this.make(folder, name, text),
    'files/read': ({ path }) => ({ text: this.file(path), revision: String(this.file(path).length) }),
    'files/write': ({ path, text, revision }) => {
      if (revision && revision !== String(this.file(path).length))
        throw new Alert('Failed to save', 'The file was changed');
      this.state.files.set(path, text);
      this.notify('files/changed', { path: path.slice(0, Math.max(0, path.lastIndexOf('/'))) });
      return { revision: String(text.length) };
    },
    'files/delete': ({ paths }) => {
      paths.forEach((path: string) => this.state.files.delete(path));
      return {};
    },
    'files/rename': ({ path, name }) => {
      const made = this.make('', name, this.file(path));
      this.state.files.delete(path);
      return made;
    },
    'files/search': ({ text }) => ({
      items: [...this.state.files].flatMap(([path, content]) =>
        (content ?? '')
          .split('\n')
          .flatMap((line, k) =>
            line.includes(text)
              ? [{ path, line: k + 1, start: line.indexOf(text), length: text.length, preview: line }]
              : [],
          ),
      ),
    }),
    'figure/get': () => this.figure,
    'figure/drawing': ({ width, height, theme }) => drawingOf(this.state.model!, width, height, theme),
    'figure/tip': ({ x, y }) => ({ line: 0, index: 3, x: 1.5, y: 0.25, px: x, py: y }),
    'figure/gesture': () => {
      this.changeFigure();
      return this.figure;
    },
    'figure/edit': ({ changes }) => {
      Object.assign(this.state.model!, changes);
      this.changeFigure();
      return this.figure;
    },
    'figure/picture': () => ({ base64: kPixel }),
    'figure/save': ({ name }) => {
      if (this.state.saved.some((each) => each.name === name))
        throw new Alert('Failed to Save', `Figure named "${name}" already exists.`);
      this.state.saved.push({ id: name, name, timeStamp: 817_000_000, thumbnail: kPixel });
      return { id: name };
    },
    'figure/close': () => {
      this.state.model = null;
      this.changeFigure();
      return {};
    },
    'figures/list': () => ({ items: this.state.saved }),
    'figures/show': () => {
      this.state.model = exampleModel('plot');
      this.changeFigure();
      return {};
    },
    'figures/delete': ({ id }) => {
      this.state.saved = this.state.saved.filter((each) => each.id !== id);
      return {};
    },
    'docs/tree': () => ({ files: kDocs }),
    'docs/page': ({ relativePath }) => ({ html: docPage(relativePath) }),
    'docs/picture': ({ relativePath }) =>
      relativePath === 'functions/curve.svg'
        ? { svg: '<svg xmlns="http://www.w3.org/2000/svg" width="60" height="20"><path d="M0 20L60 0"/></svg>' }
        : null,
    'docs/search': ({ text }) => ({ items: kDocs.filter((file) => !file.isDir && file.displayName.includes(text)) }),
    'docs/name': ({ name }) =>
      kDocs.some((file) => file.displayName === name) ? { relativePath: `functions/${name}.html` } : null,
  };
}

const kColors: [RegExp, string, string][] = [
  [/%.*/, 'comments', 'tertiary label color'],
  [/'[^'\n]*'/, 'characterArray', 'system purple'],
  [/\b(for|if|end|while|else|function|return)\b/, 'keyword', 'system blue'],
  [new RegExp(`\\b(${kBuiltIns.join('|')}|cos|exp|title|legend|pi)\\b`), 'builtInFunction', 'system orange'],
  [/\b\d+\.?\d*/, 'number', 'system green'],
];

function colors(text: string): Span[] {
  const all = new RegExp(kColors.map(([pattern]) => `(?:${pattern.source})`).join('|'), 'g');
  return [...text.matchAll(all)].map((match) => {
    const [, type, color] =
      kColors.find(([pattern]) => new RegExp(`^(?:${pattern.source})$`).test(match[0])) ?? kColors[4]!;
    return { start: match.index, length: match[0].length, type, color };
  });
}

/// A carrier in memory between the app and a fake session.
export class MemoryEngine implements Engine {
  private onText: (text: string) => void = () => {};
  private onState: (state: CarrierState) => void = () => {};
  private leave: (() => void) | null = null;
  constructor(readonly session: FakeSession) {}
  listen(onText: (text: string) => void, onState: (state: CarrierState) => void): void {
    this.onText = onText;
    this.onState = onState;
  }
  send(text: string): void {
    void this.session.receive(text, (answer) => {
      if (this.leave) this.onText(answer);
    });
  }
  open(): void {
    this.leave = this.session.join((text) => this.onText(text));
    this.onState('open');
  }
  retry(): void {
    if (!this.leave) this.open();
  }
  close(): void {
    this.lose();
  }
  lose(): void {
    this.leave?.();
    this.leave = null;
    this.onState('lost');
  }
}
