import type { EditorView } from '@codemirror/view';
import { keepFocus } from '../design/widgets';
import type { Suggestions } from './suggestions';

/// The strip of suggestions by a field. A press leaves the focus in the field.
export function SuggestionStrip({ suggestions, view }: { suggestions: Suggestions; view: () => EditorView | null }) {
  const items = suggestions.items.value;
  if (!items.length) return null;
  const take = (at: number) => {
    const field = view();
    if (field) suggestions.take(field, at);
  };
  return (
    <div class="suggestions" onPointerDown={keepFocus}>
      {items.map((item, at) => (
        <button
          type="button"
          tabIndex={-1}
          key={item.label}
          title={item.detail}
          class={`suggestion ${item.kind}${at === suggestions.chosen.value ? ' on' : ''}`}
          onClick={() => take(at)}
        >
          {item.label}
        </button>
      ))}
      <span class="visually-hidden" role="status">
        {items[Math.max(0, suggestions.chosen.value)]?.detail}
      </span>
    </div>
  );
}
