/// The settings of the current figure: title, axes, lines, legend, grid. Each change is an edit of
/// the model's coded form, carried out by the engine.

import type { ComponentChildren } from 'preact';
import { useEffect } from 'preact/hooks';
import type { App } from '../shell/core/app';
import { IconButton, Select, Switch } from '../design/widgets';
import { text as t } from '../texts/texts';
import { codedColor, colorOf, kLineColors } from './core/colors';
import { limitsOf, linesOf, short, textOf, type PlotLine } from './core/model';

export default function FigureSettings({ app, onClose }: { app: App; onClose(): void }) {
  const { figure } = app;
  const model = figure.model.value;
  useEffect(() => figure.watchModel(), []);
  if (!model) return <div class="figure-settings loading" aria-busy="true" />;
  const surface = figure.kind.value === 'surface';
  const set = (key: string, value: unknown) => void figure.edit({ [key]: value });
  const labelKey = (axis: string) => (surface ? `${axis}label` : `${axis}Label`);
  return (
    <div class="figure-settings" role="group" aria-label={t.figure.configure}>
      <div class="settings-head">
        <h3>{t.figure.configure}</h3>
        <IconButton icon="close" label={t.figure.back} onClick={onClose} />
      </div>
      <Row label={t.figure.titleLabel}>
        <TextField
          label={t.figure.titleLabel}
          value={textOf(model, 'title')}
          onSet={(text) => set('title', text || null)}
        />
      </Row>
      {(surface ? ['x', 'y', 'z'] : ['x', 'y']).map((axis) => (
        <AxisSettings
          key={axis}
          axis={axis}
          model={model}
          labelKey={labelKey(axis)}
          set={set}
          autoKey={surface ? `auto${axis.toUpperCase()}Lims` : `auto${axis.toUpperCase()}Limits`}
        />
      ))}
      {!surface && linesOf(model).map((line, k) => <LineSettings key={k} line={line} at={k} set={set} />)}
      <fieldset>
        <Row label={t.figure.grid}>
          <Switch
            label={t.figure.grid}
            checked={Boolean(model[surface ? 'grid' : 'shouldShowGrid'])}
            onChange={(on) => set(surface ? 'grid' : 'shouldShowGrid', on)}
          />
        </Row>
        {!surface && (
          <>
            <Row label={t.figure.legend}>
              <Switch
                label={t.figure.legend}
                checked={Boolean(model.shouldShowLegend)}
                onChange={(on) => set('shouldShowLegend', on)}
              />
            </Row>
            {Boolean(model.shouldShowLegend) && (
              <Row label={t.figure.position}>
                <Select
                  label={t.figure.position}
                  value={Number((model.legendAttributes as { position: number }).position)}
                  options={t.figure.positions.map((name, k) => [k, name])}
                  onChange={(at) => set('legendAttributes/position', at)}
                />
              </Row>
            )}
          </>
        )}
      </fieldset>
    </div>
  );
}

function Row({ label, children }: { label: string; children: ComponentChildren }) {
  return (
    <div class="setting">
      <span>{label}</span>
      {children}
    </div>
  );
}

function TextField(props: { label: string; value: string; onSet(text: string): void; number?: boolean }) {
  return (
    <input
      class="field small"
      aria-label={props.label}
      value={props.value}
      inputMode={props.number ? 'decimal' : 'text'}
      onChange={(event) => props.onSet(event.currentTarget.value)}
    />
  );
}

type Set = (key: string, value: unknown) => void;

function AxisSettings(props: {
  axis: string;
  model: Record<string, unknown>;
  labelKey: string;
  autoKey: string;
  set: Set;
}) {
  const { axis, model, set } = props;
  const limits = limitsOf(model, axis);
  const setLimit = (end: 'lower' | 'upper', text: string) => {
    const value = Number(text);
    if (text.trim() && Number.isFinite(value)) set(`${axis}lims`, { ...limits, [end]: value });
  };
  const name = t.figure.axis(axis);
  return (
    <fieldset>
      <legend>{name}</legend>
      <Row label={t.figure.label}>
        <TextField
          label={`${name}, ${t.figure.label}`}
          value={textOf(model, props.labelKey)}
          onSet={(text) => set(props.labelKey, text)}
        />
      </Row>
      <Row label={t.figure.from}>
        <span class="range">
          <TextField
            number
            label={t.figure.limit(name, t.figure.lower)}
            value={short(limits.lower)}
            onSet={(text) => setLimit('lower', text)}
          />
          <span>{t.figure.to}</span>
          <TextField
            number
            label={t.figure.limit(name, t.figure.upper)}
            value={short(limits.upper)}
            onSet={(text) => setLimit('upper', text)}
          />
        </span>
      </Row>
      <Row label={t.figure.automatic}>
        <Switch
          label={`${name}, ${t.figure.automatic}`}
          checked={Boolean(model[props.autoKey])}
          onChange={(on) => set(props.autoKey, on)}
        />
      </Row>
    </fieldset>
  );
}

function LineSettings({ line, at, set }: { line: PlotLine; at: number; set: Set }) {
  const { attribute } = line;
  const change = (field: string) => (value: unknown) => set(`lines/${at}/attribute/${field}`, value);
  const name = attribute.name || t.figure.lineName(at + 1);
  return (
    <fieldset>
      <legend>{name}</legend>
      <Row label={t.figure.name}>
        <TextField label={`${name}, ${t.figure.name}`} value={attribute.name ?? ''} onSet={change('name')} />
      </Row>
      <Row label={t.figure.style}>
        <Select
          label={`${name}, ${t.figure.style}`}
          value={attribute.lineStyle}
          options={t.figure.lineStyles.map((text, k) => [k, text])}
          onChange={change('lineStyle')}
        />
      </Row>
      <div class="swatches" role="radiogroup" aria-label={`${name}, ${t.figure.color}`}>
        {kLineColors.map((color) => (
          <button
            type="button"
            role="radio"
            key={color.role}
            class={`swatch tone-${color.tone}`}
            title={color.name}
            aria-label={color.name}
            aria-checked={colorOf(attribute.lineColor)?.role === color.role}
            onClick={() => change('lineColor')(codedColor(color))}
          />
        ))}
      </div>
      <Row label={t.figure.width}>
        <Select
          label={`${name}, ${t.figure.width}`}
          value={attribute.lineWidth}
          options={[...new Set([0.5, 1, 1.5, 2, 3, 4, attribute.lineWidth])]
            .sort((a, b) => a - b)
            .map((width) => [width, String(width)])}
          onChange={change('lineWidth')}
        />
      </Row>
      <Row label={t.figure.marker}>
        <Select
          label={`${name}, ${t.figure.marker}`}
          value={attribute.markerStyle}
          options={t.figure.markers.map((text, k) => [k, text])}
          onChange={change('markerStyle')}
        />
      </Row>
      <Row label={t.figure.inLegend}>
        <Switch
          label={`${name}, ${t.figure.inLegend}`}
          checked={attribute.shownInLegend}
          onChange={change('shownInLegend')}
        />
      </Row>
    </fieldset>
  );
}
