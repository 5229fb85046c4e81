/// The types of the engine's protocol: every request with its parameters and result, and every
/// notification. Texts are counted in UTF-16 units from 0, lines and columns from 1.

export type RunStatus = 'idle' | 'running' | 'paused' | 'waitInput';
export type Theme = 'light' | 'dark';
export type Empty = Record<string, never>;

export interface Settings {
  numDigitIndex: number;
  showWarning: boolean;
  sortedBy: number;
  consoleCells: number;
  docTextSize: number;
  docStyle: 'auto' | 'dark' | 'light';
}

export interface MessagePlace {
  file?: string | null;
  line?: number | null;
  column?: number | null;
  warning?: boolean;
}

export interface ConsoleItem {
  index: number;
  contentType: string;
  varName?: string | null;
  text: string;
  message?: MessagePlace | null;
}

export interface RunResult {
  status: 'done' | 'failed' | 'fault';
  seconds: number;
}
export interface Completion {
  label: string;
  kind: 'function' | 'variable' | 'field' | 'file';
  detail: string;
}
export interface Variable {
  name: string;
  class: string;
  size: number[];
  bytes: number;
  preview: string;
}
export interface Span {
  start: number;
  length: number;
  type: string;
  color: string;
}
export interface Selection {
  text: string;
  start: number;
  end: number;
}

export interface FileItem {
  id: string;
  relativePath: string;
  size?: number | null;
  isFolder: boolean;
  lastModifiedDate?: number | string | null;
}
export interface SearchHit {
  path: string;
  line: number;
  start: number;
  length: number;
  preview: string;
}

export type KeyboardType = 'alpha' | 'alphaCap' | 'symbol';
export interface Key {
  id: string;
  char?: string;
  text?: string;
  image?: string;
  widthUnit: number;
  longPress?: string[];
}
export type Tap = 'single' | 'double' | 'long';
export interface KeyPress {
  keyboardType: KeyboardType;
  capLocked: boolean;
  insert?: string;
  action?: 'deleteBackward' | 'enter';
}

export type FigureKind = 'none' | 'plot' | 'surface';
export interface FigureAnswer {
  kind: FigureKind;
  model: FigureModel | null;
  revision: number;
}
export type FigureModel = Record<string, unknown>;
export interface DrawingItem {
  kind: 'path' | 'polygon' | 'marker' | 'text' | 'clip' | 'restore';
  role: string;
  points?: (number | null)[];
  stroke?: string;
  fill?: string;
  width?: number;
  dash?: number[];
  text?: string;
  x?: number;
  y?: number;
  size?: number;
  anchor?: 'start' | 'middle' | 'end';
  baseline?: string;
  angle?: number;
  color?: string;
  /// Of markers: the pieces of the outline around a point.
  outline?: number[][];
  closed?: boolean;
}
/// `plotArea` holds left, top, right and bottom; `title` and `description` are for whoever cannot see.
export interface Drawing {
  width: number;
  height: number;
  title: string;
  description: string;
  plotArea: [number, number, number, number];
  items: DrawingItem[];
}
export interface FigureTip {
  line: number;
  index: number;
  x: number;
  y: number;
  px: number;
  py: number;
}
export interface Mesh {
  surfaces: { numRows: number; numCols: number; points: string }[];
  xlims: { lower: number; upper: number };
  ylims: { lower: number; upper: number };
  zlims: { lower: number; upper: number };
  /// Degrees about x, y, z; parts of an edge to the right and upwards.
  view: { rotation: [number, number, number]; translation: [number, number]; zoom: number };
  /// From the lower limit of z to the upper one.
  colors: string[];
  revision: number;
}
export type Gesture =
  | { kind: 'pan' | 'rotate'; dx: number; dy: number; width: number; height: number }
  | { kind: 'pinch'; x: number; y: number; scaleX: number; scaleY: number; width: number; height: number }
  | { kind: 'zoom'; scale: number; width: number; height: number }
  | { kind: 'reset'; width: number; height: number };
export interface SavedFigure {
  id: string;
  name: string;
  timeStamp: number;
  thumbnail: string;
}
export type PictureFormat = 'png' | 'svg' | 'pdf';

export interface DocFile {
  relativePath: string;
  displayName: string;
  isDir: boolean;
  ext: string;
}
export interface DocHit {
  relativePath: string;
  displayName: string;
  excerpt?: string;
}

type Path = { path: string };
type Paths = { paths: string[] };

/// Each method: [parameters, result].
export interface Methods {
  'session/open': [
    Empty,
    {
      version: string;
      protocol: number;
      workDir: string;
      workDirDisplayText: string;
      settings: Settings;
      runState: RunStatus;
    },
  ];
  'settings/get': [Empty, Settings];
  'settings/set': [Partial<Settings>, Settings];
  'console/run': [{ text: string; folder?: string }, RunResult];
  'file/run': [Path, RunResult];
  'run/stop': [Empty, Empty];
  'console/answer': [{ text: string }, Empty];
  'console/items': [Empty, { items: ConsoleItem[] }];
  'console/clear': [Empty, Empty];
  'console/history': [Empty, { items: string[] }];
  'console/complete': [{ text: string; position: number }, { from: number; items: Completion[] }];
  'console/isComplete': [{ text: string }, { complete: boolean }];
  'workspace/list': [Empty, { variables: Variable[] }];
  'workspace/show': [{ name: string }, { text: string }];
  'editor/highlight': [{ text: string }, { spans: Span[] }];
  'editor/indentedLine': [{ text: string; position: number }, { line: string }];
  'editor/comment': [Selection, Selection];
  'editor/uncomment': [Selection, Selection];
  'editor/indent': [Selection, Selection];
  'keyboard/layouts': [Empty, Record<KeyboardType, Key[][]>];
  'keyboard/press': [{ keyboardType: KeyboardType; capLocked: boolean; key: string; tap: Tap }, KeyPress];
  'files/list': [Path, { path: string; sortedBy: number; items: FileItem[] }];
  'files/newFile': [{ folder: string; name: string }, Path];
  'files/newFolder': [{ folder: string; name: string }, Path];
  'files/rename': [{ path: string; name: string }, Path];
  'files/duplicate': [Path, Path];
  'files/copy': [Paths & { folder: string }, Paths];
  'files/move': [Paths & { folder: string }, Paths];
  'files/delete': [Paths, Empty];
  'files/import': [{ folder: string; name: string; text?: string; base64?: string }, Path];
  'files/read': [Path, { text: string; revision: string }];
  'files/write': [{ path: string; text: string; revision?: string }, { revision: string }];
  'files/search': [{ text: string }, { items: SearchHit[] }];
  'figure/get': [Empty, FigureAnswer];
  'figure/edit': [{ changes: Record<string, unknown> }, FigureAnswer];
  'figure/drawing': [{ width: number; height: number; theme: Theme }, Drawing];
  'figure/mesh': [Empty, Mesh];
  'figure/tip': [{ x: number; y: number; width: number; height: number }, FigureTip | null];
  'figure/gesture': [Gesture, FigureAnswer];
  'figure/picture': [
    { format: PictureFormat; width?: number; height?: number; theme?: Theme; scale?: number },
    { base64: string },
  ];
  'figure/save': [{ name: string }, { id: string | null }];
  'figure/close': [Empty, Empty];
  'figures/list': [Empty, { items: SavedFigure[] }];
  'figures/show': [{ id: string }, Empty];
  'figures/delete': [{ id: string }, Empty];
  'docs/tree': [Empty, { files: DocFile[] }];
  'docs/page': [{ relativePath: string; style: 'auto' | 'dark' | 'light'; textSize: number }, { html: string }];
  'docs/picture': [{ relativePath: string }, { svg: string } | null];
  'docs/search': [{ scope: 'title' | 'content'; text: string }, { items: DocHit[] }];
  'docs/name': [{ name: string }, { relativePath: string } | null];
}

export interface Notifications {
  'console/item': ConsoleItem;
  'console/prompt': { text: string };
  'console/cleared': Empty;
  'console/replaced': { items: ConsoleItem[] };
  'console/progress': { text: string };
  'run/state': { status: RunStatus };
  'figure/changed': { kind: FigureKind; revision: number };
  'files/changed': { path: string };
  'workspace/changed': Empty;
}

export type Method = keyof Methods;
export type Params<M extends Method> = Methods[M][0];
export type Result<M extends Method> = Methods[M][1];
export type Notification = keyof Notifications;
