/// Find and replace, fetched when first asked for. `editor.css` gives its look.

import { openSearchPanel, search, searchKeymap } from '@codemirror/search';
import { StateEffect, StateField } from '@codemirror/state';
import { type EditorView, keymap } from '@codemirror/view';

const added = StateField.define<boolean>({ create: () => true, update: (value) => value });

export function showSearch(view: EditorView): void {
  if (!view.state.field(added, false)) {
    view.dispatch({ effects: StateEffect.appendConfig.of([added, search({ top: true }), keymap.of(searchKeymap)]) });
  }
  openSearchPanel(view);
}
