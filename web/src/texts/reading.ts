/// Texts of help, settings, keyboard, shortcuts and the tour.

export const help = {
  contents: 'Contents',
  back: 'Back',
  search: 'Search',
  searching: 'Searching ...',
  nothing: 'No Item Found',
  title: 'Title',
  content: 'Content',
  scope: 'Where to search',
  loading: 'Loading …',
  inPage: 'Find in page',
  found: (count: number) => `${count} found`,
  foundAt: (at: number, count: number) => `${at} of ${count} found`,
  nextMatch: 'Next match',
  previousMatch: 'Previous match',
  tryIt: 'Try it',
  page: 'Help page',
};

export const keyboard = {
  name: 'Keyboard',
  toSystem: 'System keyboard',
  toOwn: 'Program keyboard',
  hide: 'Hide the keyboard',
  alternatives: 'Alternatives',
  keys: {
    deleteBackward: 'Delete', enter: 'Return', shift: 'Shift', space: 'Space', numKeyboard: 'Numbers and symbols',
    abc: 'Letters', dot: 'Dot', multiply: 'Times', plus: 'Plus', minus: 'Minus', divide: 'Divide',
    lSqb: 'Left square bracket', rSqb: 'Right square bracket', lpar: 'Left parenthesis', rpar: 'Right parenthesis',
    colon: 'Colon', semicolon: 'Semicolon', equal: 'Equals', comma: 'Comma', power: 'Power', lt: 'Less than',
    gt: 'Greater than', tilde: 'Tilde', exclaim: 'Exclamation mark', underScore: 'Underscore', at: 'At',
    singleQuote: 'Single quote', percent: 'Percent', or: 'Or', and: 'And', question: 'Question mark',
    forwardSlash: 'Slash', backwardSlash: 'Backslash',
  } as Record<string, string>,
};

export const settings = {
  look: 'Look', numbers: 'Numbers', typing: 'Typing', files: 'Files', helpPages: 'Help', about: 'About',
  theme: 'Theme', themes: { auto: 'As the system', light: 'Light', dark: 'Dark' },
  motion: 'Motion', motions: { auto: 'As the system', off: 'Off' },
  codeSize: 'Size of code',
  digits: 'Digits shown',
  warnings: 'Show warnings',
  keyboard: 'Keyboard', keyboards: { auto: 'By device', own: 'Program keyboard', system: 'System keyboard' },
  enterRuns: 'Return runs a command',
  enterRunsText: 'Otherwise it makes a new line, and Ctrl + Return runs.',
  order: 'Order of files',
  textSize: 'Text size of help',
  workDirectory: 'Work directory',
  version: 'Version',
  tour: 'Show the tour again',
  shortcuts: 'Keyboard shortcuts',
  licences: 'Licences of fonts and libraries',
  diagnostics: 'Diagnostics',
  diagnosticsText: 'What helps to understand a fault: versions, sizes, times, the last errors. Nothing is ever sent by itself.',
  showDiagnostics: 'Show',
  saveDiagnostics: 'Save as a file',
  larger: 'Larger', smaller: 'Smaller',
};

export const shortcuts = {
  title: 'Keyboard shortcuts',
  groups: [
    { name: 'Anywhere', rows: [
      ['Alt 1 … 7', 'Console, editor, figure, files, variables, help, settings'],
      ['Ctrl .', 'Stop the run'], ['F6', 'Next panel'], ['?', 'This list, outside of texts'],
    ] },
    { name: 'Console', rows: [
      ['Return', 'Run, or a new line inside a block'], ['Shift Return', 'New line'], ['Ctrl Return', 'Run'],
      ['↑ ↓', 'Older and newer commands'], ['Tab', 'Complete a name'], ['Ctrl L', 'Clear'],
    ] },
    { name: 'Editor', rows: [
      ['Ctrl S', 'Save'], ['Ctrl Return', 'Save and run the file'], ['Shift Ctrl Return', 'Run the selection'],
      ['Ctrl /', 'Comment'], ['Shift Ctrl /', 'Uncomment'], ['Ctrl I', 'Indent'], ['Ctrl F', 'Find and replace'],
      ['F1', 'Help on the name at the caret'],
    ] },
    { name: 'Figure', rows: [
      ['← →', 'Step through the points'], ['Shift arrows', 'Pan or turn'], ['+ −', 'Zoom'], ['0', 'Reset the view'],
    ] },
  ],
};

export const tour = {
  name: 'Tour',
  next: 'Next', back: 'Back', done: 'Start', leave: 'Leave the tour',
  progress: (at: number, count: number) => `${at} of ${count}`,
  copied: 'The examples are in your files',
  steps: {
    welcome: ['Welcome to Kelo', 'A numeric workbench that starts at once, answers fast and keeps what you make.'],
    console: ['Ask the console', 'Type a command and press Run. Errors lead to their place with one tap.'],
    editor: ['Write programs', 'Scripts and functions live in files. What you type is kept, even when the page is closed.'],
    figure: ['Touch figures', 'Pinch, drag, tap a point, tap twice to go back. Save them or take them along as a picture.'],
    files: ['Find your files', 'Everything lies in one folder. Bring files in by Import or by dropping them here.'],
    help: ['Look things up', 'Every function has a page with examples that run with one tap.'],
  } as Record<string, [string, string]>,
};
