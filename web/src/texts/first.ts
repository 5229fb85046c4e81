/// Texts of the page before the app, which does not have the whole catalogue yet.

export const first = {
  input: 'Command',
  placeholder: 'Type a command',
  failed: 'Kelo could not be loaded. Reload the page.',
};
