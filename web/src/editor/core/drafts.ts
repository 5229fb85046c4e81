/// Drafts: the unsaved text of each open file, kept on this device so that a crash or a closed page
/// costs nothing. A draft knows the revision of the file that it was begun from.

import type { Store } from '../../engine/core/ports';

export interface Draft {
  text: string;
  revision: string;
}

export class Drafts {
  constructor(private readonly store: Store) {}

  get(path: string): Draft | null {
    const text = this.store.read(`draft:${path}`);
    if (!text) return null;
    try {
      const draft = JSON.parse(text);
      return typeof draft.text === 'string' ? draft : null;
    } catch {
      return null;
    }
  }

  /// False when the store is full: then the text lives in the page alone.
  put(path: string, draft: Draft): boolean {
    return this.store.write(`draft:${path}`, JSON.stringify(draft));
  }
  remove(path: string): void {
    this.store.remove(`draft:${path}`);
  }

  get openFiles(): { paths: string[]; active: string | null } {
    try {
      const { paths, active } = JSON.parse(this.store.read('openFiles') ?? '');
      return { paths: paths.filter((path: unknown) => typeof path === 'string'), active };
    } catch {
      return { paths: [], active: null };
    }
  }
  set openFiles(value: { paths: string[]; active: string | null }) {
    this.store.write('openFiles', JSON.stringify(value));
  }
}
