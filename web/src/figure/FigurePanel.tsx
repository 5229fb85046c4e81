import { useSignal } from '@preact/signals';
import { useApp } from '../shell/context';
import { Panel } from '../shell/Panel';
import type { App } from '../shell/core/app';
import type { PictureFormat } from '../engine/core/protocol';
import { lazy } from '../design/lazy';
import { bytesOf, handOver } from '../design/clipboard';
import { Empty, IconButton, showMenu } from '../design/widgets';
import { text as t } from '../texts/texts';
import { FigureCanvas } from './FigureCanvas';

const Configure = lazy(() => import('./FigureSettings'));
const Saved = lazy(() => import('./FigureList'));
const Data = lazy(() => import('./FigureData'));

/// The figure in words, by the engine, and what the keys do.
const summaryOf = (app: App) => [app.figure.drawing.value?.description, t.figure.canvasHelp].filter(Boolean).join(' ');

type View = 'figure' | 'configure' | 'list' | 'data';

export function FigurePanel() {
  const app = useApp();
  const view = useSignal<View>('figure');
  const some = app.figure.kind.value !== 'none';
  if (!some && view.value !== 'list' && view.value !== 'figure') view.value = 'figure';
  const toggle = (name: View) => {
    view.value = view.value === name ? 'figure' : name;
  };
  return (
    <Panel id="figure" title={t.shell.figure} actions={<Actions app={app} view={view.value} toggle={toggle} />}>
      {view.value === 'list' ? (
        <Saved
          app={app}
          onShown={() => {
            view.value = 'figure';
          }}
        />
      ) : view.value === 'data' ? (
        <Data app={app} />
      ) : some ? (
        <div class={`figure-body${view.value === 'configure' ? ' configuring' : ''}`}>
          <FigureCanvas app={app} describedBy="figure-summary" />
          {view.value === 'configure' && (
            <Configure
              app={app}
              onClose={() => {
                view.value = 'figure';
              }}
            />
          )}
          <p class="visually-hidden" id="figure-summary">
            {summaryOf(app)}
          </p>
        </div>
      ) : (
        <NoFigure app={app} />
      )}
    </Panel>
  );
}

function Actions({ app, view, toggle }: { app: App; view: View; toggle(name: View): void }) {
  const { figure } = app;
  const some = figure.kind.value !== 'none';
  const more = (event: MouseEvent) =>
    showMenu(event, t.editor.more, [
      { label: t.figure.exportImage, icon: 'image', disabled: !some, onPick: () => void exportPicture(app, 'png') },
      { label: t.figure.exportPdf, icon: 'export', disabled: !some, onPick: () => void exportPicture(app, 'pdf') },
      { label: t.figure.exportSvg, icon: 'export', disabled: !some, onPick: () => void exportPicture(app, 'svg') },
      { label: t.figure.data, icon: 'table', disabled: !some, divided: true, onPick: () => toggle('data') },
      ...(app.layout.mode.value === 'phone'
        ? []
        : [{ label: t.figure.resize, icon: 'resize' as const, onPick: () => app.layout.resizePanel('figure') }]),
      { label: t.figure.reset, icon: 'reset', disabled: !some, onPick: () => figure.gesture({ kind: 'reset' }) },
      { label: t.figure.help, icon: 'help', onPick: () => void app.showHelpOn('plot') },
      {
        label: t.figure.close,
        icon: 'close',
        danger: true,
        divided: true,
        disabled: !some,
        onPick: () => void figure.close(),
      },
    ]);
  return (
    <>
      {some && (
        <IconButton
          icon="sliders"
          label={t.figure.configure}
          on={view === 'configure'}
          onClick={() => toggle('configure')}
        />
      )}
      {some && <IconButton icon="save" label={t.figure.save} onClick={() => void figure.save()} />}
      <IconButton icon="list" label={t.figure.list} on={view === 'list'} onClick={() => toggle('list')} />
      <IconButton icon="more" label={t.editor.more} onClick={more} />
    </>
  );
}

const kTypes: Record<PictureFormat, string> = { png: 'image/png', svg: 'image/svg+xml', pdf: 'application/pdf' };

async function exportPicture(app: App, format: PictureFormat): Promise<void> {
  const base64 = await app.figure.picture(format);
  if (base64 === null) return;
  const name =
    (app.figure.drawing.value?.title ?? '').replace(/[^A-Za-z0-9]+/g, '_').replace(/^_+|_+$/g, '') || 'figure';
  await handOver(`${name}.${format}`, kTypes[format], bytesOf(base64));
}

function NoFigure({ app }: { app: App }) {
  return (
    <Empty title={t.figure.emptyTitle} text={t.figure.emptyText}>
      <button
        type="button"
        class="button"
        disabled={app.console.busy.value}
        onClick={() => app.console.run(t.figure.example)}
      >
        {t.figure.tryPlot}
      </button>
    </Empty>
  );
}
