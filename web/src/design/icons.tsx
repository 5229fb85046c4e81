/// The icons, drawn on a grid of 24 with one width of line, and the mark of the app: the rings of a
/// weathered trunk.

const kPaths = {
  console: 'M5 7l5 5-5 5M12.5 17.5H19',
  editor: 'M6 3.5h8L18.5 8v12.5H6zM13.5 3.5V8.5h5M9 12.5h6.5M9 16h4.5',
  figure: 'M4.5 4v15.5H20M7.5 15.5c2.5 0 3-8.5 6-8.5s2.5 5 6 5',
  files: 'M3.5 6h6l2 2.5h9v10.5h-17zM3.5 11.5h17',
  workspace: 'M4 5h16v14H4zM4 9.7h16M4 14.3h16M10 5v14',
  help: 'M9 9.2c0-1.9 1.4-3.2 3.1-3.2s3 1.2 3 2.9c0 2.5-3 2.6-3 5.1M12.1 17.6v.4',
  settings: 'M4 7h9M17 7h3M4 12h3M11 12h9M4 17h10M18 17h2M15 5v4M9 10v4M16 15v4',
  more: 'M5.5 12h.01M12 12h.01M18.5 12h.01',
  run: 'M8 5.500l10 6.5-10 6.500z',
  stop: 'M7 7h10v10H7z',
  up: 'M12 19V5.500M6 11l6-6 6 6',
  down: 'M12 5v13.500M6 13l6 6 6-6',
  clear: 'M4.5 7h15M9.5 7V4.500h5V7M6.5 7l1 12.500h9l1-12.500M10.3 11v5M13.7 11v5',
  plus: 'M12 5.500v13M5.5 12h13',
  close: 'M6.5 6.500l11 11M17.5 6.500l-11 11',
  back: 'M14.5 5.500L8 12l6.5 6.5',
  forward: 'M9.5 5.500L16 12l-6.5 6.5',
  chevronDown: 'M6 9.500l6 6 6-6',
  save: 'M12 4v10.500M7.5 10.500L12 15l4.5-4.500M5 19.500h14',
  export: 'M12 15V4M7.5 8L12 3.5 16.5 8M6 11.500H5v8.500h14v-8.500h-1',
  search: 'M10.8 4.500a6.3 6.3 0 1 0 0 12.600a6.3 6.3 0 1 0 0-12.600M15.5 15.500l4.5 4.5',
  undo: 'M8.5 5L4.5 9l4 4M4.5 9h9.500a5 5 0 0 1 0 10h-4',
  redo: 'M15.5 5l4 4-4 4M19.5 9H10a5 5 0 0 0 0 10h4',
  sort: 'M7 5v14M3.8 15.800L7 19l3.2-3.200M13 6.500h7M13 12h5M13 17.500h3',
  select: 'M4.5 4.500h15v15h-15zM8.5 12l2.5 2.8 4.7-5.6',
  check: 'M5 12.500l4.7 5L19.5 7',
  copy: 'M8.5 8.500h11v11h-11zM8.5 15.500h-4v-11h11v4',
  duplicate: 'M8.5 8.500h11v11h-11zM8.5 15.500h-4v-11h11v4M14 11.500v5M11.5 14h5',
  move: 'M3.5 6h6l2 2.500h9v10.500h-17zM9 13.800h6M12.7 11.300l2.5 2.5-2.5 2.5',
  rename: 'M4 19.500l1-4L15.5 5l3.5 3.500L8.5 18.800zM13 7.500l3.5 3.5',
  file: 'M6 3.500h8L18.5 8v12.500H6zM13.5 3.500V8.500h5',
  newFolder: 'M3.5 6h6l2 2.500h9v10.500h-17zM12 11.300v5M9.5 13.800h5',
  list: 'M4 6h4v4H4zM4 14h4v4H4zM11.5 7h8.500M11.5 9.500h5M11.5 15h8.500M11.5 17.500h5',
  image: 'M4 5h16v14H4zM4 16l4.5-4.5 3.5 3.5 3-3 5 4.500M15.5 8.700h.01',
  table: 'M4 5h16v14H4zM4 9.700h16M4 14.300h16M10 5v14',
  reset: 'M5 5v5h5M5.3 10A7.3 7.3 0 1 1 4.7 14',
  sliders: 'M4 7h9M17 7h3M4 12h3M11 12h9M4 17h10M18 17h2M15 5v4M9 10v4M16 15v4',
  keyboard: 'M3.5 6.500h17v11h-17zM7 10h.01M10.3 10h.01M13.7 10h.01M17 10h.01M7.5 14h9',
  shift: 'M12 4.500L4.5 12.500h4v6h7v-6h4z',
  'shift.fill': 'M12 4.500L4.5 12.500h4v6h7v-6h4z',
  'delete.left': 'M8.5 5.500h12v13h-12L3 12zM12 9.500l5 5M17 9.500l-5 5',
  enter: 'M19.5 6v6.500H5.500M9.5 8.500l-4 4 4 4',
  multiply: 'M7 7l10 10M17 7L7 17',
  minus: 'M5.5 12h13',
  divide: 'M5.5 12h13M12 6.500h.01M12 17.500h.01',
  hide: 'M3.5 4.500h17v9h-17zM8.5 17.500L12 20.500l3.5-3M8 9h8',
  phone: 'M7.5 3.500h9v17h-9zM10.7 17.700h2.6',
  sidebar: 'M4 5h16v14H4zM9.5 5v14',
  comment: 'M7 19L17 5M7.5 6.500h.01M16.5 17.500h.01',
  indent: 'M4 5.500h16M11 12h9M11 8.700h9M11 15.300h9M4 18.500h16M4 9.500l3 2.5-3 2.5',
  offline:
    'M4 4l16 16M5 10.500A11 11 0 0 1 8.5 8.300M19 10.500A11 11 0 0 0 12 7.500M8 14a6 6 0 0 1 3-1.500M16 14a6 6 0 0 0-1-.8M12 18h.01',
  resize: 'M14 4.5h5.5V10M19.5 4.5l-6 6M10 19.5H4.5V14M4.5 19.5l6-6',
  insert: 'M4.5 5v10.500H18M14 11.500l4 4-4 4',
} as const;

export type IconName = keyof typeof kPaths;
const kFilled = new Set<string>(['run', 'stop', 'shift.fill']);
const kBold = new Set<string>(['more']);

export function Icon({ name }: { name: IconName }) {
  return (
    <svg class={`icon${kBold.has(name) ? ' bold' : ''}`} viewBox="0 0 24 24" aria-hidden="true" focusable="false">
      <path d={kPaths[name]} fill={kFilled.has(name) ? 'currentColor' : 'none'} />
    </svg>
  );
}

export const isIcon = (name: string): name is IconName => name in kPaths;

export function Rings() {
  return (
    <svg class="rings" viewBox="0 0 48 48" aria-hidden="true" fill="none" stroke="currentColor" stroke-width="2.2">
      <path d="M24 3c12.5 0 21 8.5 21 20.500S36.5 45 24 45 3 36.5 3 24.5 11.5 3 24 3z" />
      <path d="M25 9.500c8.5 0 14 6 14 14s-6 15-14.5 15S9.5 32.5 9.5 24.5 16 9.5 25 9.500z" />
      <path d="M26 16c4.8 0 7.5 3.3 7.5 7.500S30.3 32 25.5 32 16 29 16 24.5 20.5 16 26 16z" />
      <path d="M27 22.500a2 2 0 1 1-.1 0M28.5 24.500L45 31" stroke-linecap="round" />
    </svg>
  );
}
