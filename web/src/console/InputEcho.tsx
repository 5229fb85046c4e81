import { useEffect, useState } from 'preact/hooks';
import type { Span } from '../engine/core/protocol';
import type { App } from '../shell/core/app';
import { coloredPieces } from '../code/colorClass';

const kLargest = 20_000;
const kKept = 300;
const known = new Map<string, Span[]>();

/// A command that was run, with its colours. They are kept, since items come and go while scrolling.
export function InputEcho({ app, text }: { app: App; text: string }) {
  const [spans, setSpans] = useState<Span[]>(known.get(text) ?? []);
  const connected = app.session.state.value === 'open';
  useEffect(() => {
    if (!connected || known.has(text) || text.length > kLargest) return;
    let shown = true;
    app.session.request('editor/highlight', { text }).then(
      (answer) => {
        if (known.size > kKept) known.delete(known.keys().next().value!);
        known.set(text, answer.spans);
        if (shown) setSpans(answer.spans);
      },
      () => {},
    );
    return () => {
      shown = false;
    };
  }, [text, connected]);
  return (
    <pre class="code-text">
      <ColoredText text={text} spans={spans} />
    </pre>
  );
}

function ColoredText({ text, spans }: { text: string; spans: Span[] }) {
  const pieces = coloredPieces(text, spans);
  return <>{pieces.map(({ text: piece, name }) => (name ? <span class={name}>{piece}</span> : piece))}</>;
}
