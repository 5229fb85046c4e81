/// What a person sets on this device alone: look, motion, keyboard. The engine's own settings
/// (digits, warnings, order of files) are kept by the engine.

export interface Preferences {
  theme: 'auto' | 'light' | 'dark';
  keyboard: 'auto' | 'own' | 'system';
  motion: 'auto' | 'off';
  /// Size of code in the console and the editor, in percent.
  codeSize: number;
  /// Enter runs the command; otherwise it makes a new line and Ctrl+Enter runs.
  enterRuns: boolean;
  tourSeen: boolean;
}

const kDefaults: Preferences = {
  theme: 'auto',
  keyboard: 'auto',
  motion: 'auto',
  codeSize: 100,
  enterRuns: true,
  tourSeen: false,
};

/// The stored text; an unreadable one counts as none.
export function readPreferences(stored: string | null): Preferences {
  try {
    return { ...kDefaults, ...JSON.parse(stored ?? '{}') };
  } catch {
    return kDefaults;
  }
}
