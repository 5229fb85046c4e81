import type { App } from '../shell/core/app';
import { Rings } from '../design/icons';
import { text as t } from '../texts/texts';
import { InputEcho } from './InputEcho';

/// What an empty console shows: commands to begin with.
export function Welcome({ app, onUse }: { app: App; onUse(text: string): void }) {
  return (
    <div class="welcome">
      <Rings />
      <h2>{t.console.emptyTitle}</h2>
      <p>{t.console.emptyText}</p>
      <ul>
        {t.console.examples.map((example) => (
          <li key={example}>
            <button type="button" class="example" onClick={() => onUse(example)}>
              <InputEcho app={app} text={example} />
            </button>
          </li>
        ))}
      </ul>
    </div>
  );
}
