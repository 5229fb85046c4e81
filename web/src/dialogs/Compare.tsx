/// Two texts side by side, with the lines marked in which they differ.

export default function Compare(props: { leftTitle: string; left: string; rightTitle: string; right: string }) {
  const [left, right] = differences(props.left.split('\n'), props.right.split('\n'));
  return (
    <div class="compare">
      <Side title={props.leftTitle} lines={left} />
      <Side title={props.rightTitle} lines={right} />
    </div>
  );
}

interface Line {
  text: string;
  differs: boolean;
}
const kShown = 2000;

function Side({ title, lines }: { title: string; lines: Line[] }) {
  return (
    <figure>
      <figcaption>{title}</figcaption>
      <pre tabIndex={0}>
        {lines.slice(0, kShown).map(({ text, differs }) => (
          <span class={differs ? 'differs' : undefined}>{text}</span>
        ))}
      </pre>
    </figure>
  );
}

/// Lines that the other text has nowhere are marked; order is left aside, since this is for looking.
function differences(left: string[], right: string[]): [Line[], Line[]] {
  const mark = (lines: string[], others: Set<string>) => lines.map((text) => ({ text, differs: !others.has(text) }));
  return [mark(left, new Set(right)), mark(right, new Set(left))];
}
