/// All texts that a person reads, in one place: another language is another file of this shape.

import { help, keyboard, settings, shortcuts, tour } from './reading';
import { console, editor, figure, files, workspace } from './working';

const dialogs = {
  ok: 'OK',
  cancel: 'Cancel',
  close: 'Close',
  unexpected: 'Unexpected error occurred',
};

const connection = {
  lost: 'The engine cannot be reached',
  lostText: 'Your console, files and figures are kept. The connection is taken up again by itself.',
  refused: 'This page is not let in',
  refusedText: 'Open the whole address that the server has printed, with what stands behind its #, or scan its code.',
  retry: 'Try now',
  notNow: 'The engine cannot be reached just now',
  back: 'Connected again',
  anew: 'The engine was started anew. Files and figures are kept, variables are not.',
};

const shell = {
  name: 'Kelo',
  console: 'Console',
  editor: 'Editor',
  figure: 'Figure',
  files: 'Files',
  workspace: 'Variables',
  help: 'Help',
  settings: 'Settings',
  more: 'More',
  panels: 'Panels',
  divider: 'Divider',
  toggleSidebar: 'Files and variables',
  status: {
    idle: 'Ready',
    running: 'Running',
    paused: 'Paused',
    waitInput: 'Waiting for input',
  },
  newVersion: 'A new version is ready',
  reload: 'Reload',
  failed: 'This panel stopped working',
  again: 'Start it again',
};

export const text = {
  dialogs,
  connection,
  shell,
  console,
  editor,
  figure,
  files,
  workspace,
  help,
  keyboard,
  settings,
  shortcuts,
  tour,
};
