import type { ComponentChildren } from 'preact';
import { useEffect } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import { shortcutsShown } from '../shell/shortcuts';
import { IconButton, Segments, Select, Switch } from '../design/widgets';
import { handOver } from '../design/clipboard';
import { text as t } from '../texts/texts';
import { kDigitCounts } from './core/settings';
import { diagnostics } from './diagnostics';

export default function SettingsPanel() {
  const app = useApp();
  const { preferences, settings } = app;
  const mine = preferences.value.value;
  const theirs = settings.values.value;
  const report = useSignal('');
  const s = t.settings;
  useEffect(() => void settings.refresh(), []);
  return (
    <Panel id="settings" title={t.shell.settings}>
      <div class="settings">
        <Group title={s.look}>
          <Row label={s.theme}>
            <Segments
              label={s.theme}
              value={mine.theme}
              options={entries(s.themes)}
              onChange={(theme) => preferences.set({ theme })}
            />
          </Row>
          <Row label={s.codeSize}>
            <Stepper
              label={s.codeSize}
              value={mine.codeSize}
              low={80}
              high={160}
              step={10}
              onChange={(codeSize) => preferences.set({ codeSize })}
            />
          </Row>
          <Row label={s.motion}>
            <Segments
              label={s.motion}
              value={mine.motion}
              options={entries(s.motions)}
              onChange={(motion) => preferences.set({ motion })}
            />
          </Row>
        </Group>
        {theirs && (
          <Group title={s.numbers}>
            <Row label={s.digits}>
              <Segments
                label={s.digits}
                value={theirs.numDigitIndex}
                options={kDigitCounts.map((count, k) => [k, String(count)])}
                onChange={(numDigitIndex) => void settings.set({ numDigitIndex })}
              />
            </Row>
            <Row label={s.warnings}>
              <Switch
                label={s.warnings}
                checked={theirs.showWarning}
                onChange={(showWarning) => void settings.set({ showWarning })}
              />
            </Row>
          </Group>
        )}
        <Group title={s.typing}>
          <Row label={s.keyboard}>
            <Select
              label={s.keyboard}
              value={mine.keyboard}
              options={entries(s.keyboards)}
              onChange={(keyboard) => preferences.set({ keyboard })}
            />
          </Row>
          <Row label={s.enterRuns} note={s.enterRunsText}>
            <Switch
              label={s.enterRuns}
              checked={mine.enterRuns}
              onChange={(enterRuns) => preferences.set({ enterRuns })}
            />
          </Row>
        </Group>
        {theirs && (
          <Group title={s.files}>
            <Row label={s.order}>
              <Select
                label={s.order}
                value={theirs.sortedBy}
                options={t.files.orders.map((name, k) => [k, name])}
                onChange={(sortedBy) => void settings.set({ sortedBy }).then(() => app.files.reload())}
              />
            </Row>
            <Row label={s.textSize}>
              <Stepper
                label={s.textSize}
                value={theirs.docTextSize}
                low={70}
                high={200}
                step={10}
                onChange={(docTextSize) => void settings.set({ docTextSize })}
              />
            </Row>
          </Group>
        )}
        <Group title={s.about}>
          <Row label={s.workDirectory}>
            <span class="value">{settings.workDirectory.value}</span>
          </Row>
          <Row label={s.version}>
            <span class="value">{settings.version.value}</span>
          </Row>
          <div class="settings-buttons">
            <button type="button" class="button" onClick={() => app.tour.start()}>
              {s.tour}
            </button>
            <button
              type="button"
              class="button"
              onClick={() => {
                shortcutsShown.value = true;
              }}
            >
              {s.shortcuts}
            </button>
            <a class="button" href="/licences.txt" target="_blank" rel="noopener">
              {s.licences}
            </a>
          </div>
        </Group>
        <Group title={s.diagnostics}>
          <p class="note">{s.diagnosticsText}</p>
          <div class="settings-buttons">
            <button
              type="button"
              class="button"
              onClick={() => {
                report.value = diagnostics(app);
              }}
            >
              {s.showDiagnostics}
            </button>
            <button
              type="button"
              class="button"
              onClick={() => void handOver('kelo-diagnostics.txt', 'text/plain', diagnostics(app))}
            >
              {s.saveDiagnostics}
            </button>
          </div>
          {report.value && (
            <pre class="report" tabIndex={0}>
              {report.value}
            </pre>
          )}
        </Group>
      </div>
    </Panel>
  );
}

function entries<T extends string>(names: Record<T, string>): [T, string][] {
  return Object.entries(names) as [T, string][];
}

function Group({ title, children }: { title: string; children: ComponentChildren }) {
  return (
    <section class="settings-group">
      <h3>{title}</h3>
      <div class="settings-card">{children}</div>
    </section>
  );
}

function Row({ label, note, children }: { label: string; note?: string; children: ComponentChildren }) {
  return (
    <div class="settings-row">
      <span>
        {label}
        {note && <small>{note}</small>}
      </span>
      {children}
    </div>
  );
}

function Stepper(props: {
  label: string;
  value: number;
  low: number;
  high: number;
  step: number;
  onChange(value: number): void;
}) {
  const { value, low, high, step } = props;
  return (
    <span class="stepper" role="group" aria-label={props.label}>
      <IconButton
        icon="minus"
        label={t.settings.smaller}
        disabled={value <= low}
        onClick={() => props.onChange(Math.max(low, value - step))}
      />
      <output>{value}%</output>
      <IconButton
        icon="plus"
        label={t.settings.larger}
        disabled={value >= high}
        onClick={() => props.onChange(Math.min(high, value + step))}
      />
    </span>
  );
}
