/// The whole page: the bar, the panels as the layout has them, and what lies above them.

import { useEffect, useRef } from 'preact/hooks';
import { lazy } from '../design/lazy';
import { Icon, Rings } from '../design/icons';
import { IconButton, MenuHost, closeMenu, keepFocus, showMenu } from '../design/widgets';
import { DialogHost } from '../dialogs/DialogHost';
import { DropSign } from '../files/DropSign';
import { ownKeyboardWanted } from '../code/useOwnKeyboard';
import { text as t } from '../texts/texts';
import type { Panel } from './core/layout';
import { AppContext, useApp } from './context';
import type { App } from './core/app';
import { Divider } from './Divider';
import { PanelView, iconOf, kOrder } from './panels';
import { editing, shortcutsShown } from './shortcuts';

const KeyboardView = lazy(() => import('../keyboard/KeyboardView'));
const TourView = lazy(() => import('../tour/TourView'));
const ShortcutList = lazy(() => import('../settings/ShortcutList'));

export function AppView({ app }: { app: App }) {
  const mode = app.layout.mode.value;
  const keyboard = editing.value && ownKeyboardWanted(app) && app.keyboard.layouts.value !== null;
  return (
    <AppContext.Provider value={app}>
      <div class={`app ${mode}${editing.value ? ' editing' : ''}${keyboard ? ' with-keyboard' : ''}`}>
        <ConnectionBar />
        {app.layout.maximized.value && mode !== 'phone' ? (
          <One name={app.layout.maximized.value} />
        ) : mode === 'desk' ? (
          <Desk />
        ) : mode === 'phone' ? (
          <Phone />
        ) : (
          <TwoPanels />
        )}
        {keyboard && <KeyboardView />}
      </div>
      <DropSign />
      <Toast />
      <DialogHost />
      <MenuHost />
      {app.tour.step.value && <TourView />}
      {shortcutsShown.value && <ShortcutList />}
    </AppContext.Provider>
  );
}

function Phone() {
  const { layout } = useApp();
  return (
    <>
      <main class="stage">
        <PanelView name={layout.front.value} />
      </main>
      <Bar panels={['console', 'editor', 'figure', 'files']} rest={['workspace', 'help', 'settings']} />
    </>
  );
}

function One({ name }: { name: Panel }) {
  const { layout } = useApp();
  return (
    <>
      {layout.mode.value === 'desk' ? <TopBar /> : <Bar panels={kOrder} rest={[]} />}
      <main class="stage desk-stage one">
        <PanelView name={name} />
      </main>
    </>
  );
}

function TwoPanels() {
  const { layout } = useApp();
  const vertical = layout.mode.value === 'lying' || innerWidth > innerHeight;
  const ref = useRef<HTMLElement>(null);
  const share = layout.shares.value.pair;
  useShares(ref, { '--pair': share });
  return (
    <>
      <Bar panels={kOrder} rest={[]} />
      <main class={`stage pair ${vertical ? 'columns' : 'rows'}${layout.alone.value ? ' alone' : ''}`} ref={ref}>
        {!layout.alone.value && (
          <>
            <div class="slot first">
              <PanelView name={layout.companion.value} />
            </div>
            <Divider name="pair" vertical={vertical} />
          </>
        )}
        <div class="slot second">
          <PanelView name="console" />
        </div>
      </main>
    </>
  );
}

function Desk() {
  const { layout } = useApp();
  const ref = useRef<HTMLElement>(null);
  const { left, right, center, side } = layout.shares.value;
  useShares(ref, { '--left': left, '--right': right, '--center': center, '--side': side });
  return (
    <>
      <TopBar />
      <main class={`stage desk-stage${layout.sidebarShown.value ? '' : ' no-sidebar'}`} ref={ref}>
        {layout.sidebarShown.value && (
          <>
            <div class="column sidebar">
              <div class="slot first">
                <PanelView name="files" />
              </div>
              <Divider name="side" vertical={false} />
              <div class="slot second">
                <PanelView name="workspace" />
              </div>
            </div>
            <Divider name="left" vertical />
          </>
        )}
        <div class="column middle">
          <div class="slot first">
            <PanelView name="editor" />
          </div>
          <Divider name="center" vertical={false} />
          <div class="slot second">
            <PanelView name="console" />
          </div>
        </div>
        <Divider name="right" vertical reversed />
        <div class="column right">
          <PanelView name={layout.side.value} />
        </div>
      </main>
    </>
  );
}

/// Shares become custom properties, by the object model, which the policy on styles allows.
function useShares(ref: { current: HTMLElement | null }, shares: Record<string, number>): void {
  useEffect(() => {
    for (const [name, share] of Object.entries(shares)) ref.current?.style.setProperty(name, String(share));
  });
}

function Mark() {
  return (
    <span class="mark">
      <Rings />
      <span class="wordmark">{t.shell.name}</span>
    </span>
  );
}

function TopBar() {
  const { layout, settings } = useApp();
  const sides: Panel[] = ['figure', 'help', 'settings'];
  return (
    <header class="top-bar">
      <IconButton
        icon="sidebar"
        label={t.shell.toggleSidebar}
        on={layout.sidebarShown.value}
        onClick={() => layout.toggleSidebar()}
      />
      <Mark />
      <span class="work-directory">{settings.workDirectory.value}</span>
      <nav class="side-tabs" aria-label={t.shell.panels}>
        {sides.map((panel) => (
          <button
            type="button"
            key={panel}
            class={layout.side.value === panel ? 'on' : ''}
            aria-current={layout.side.value === panel ? 'page' : undefined}
            onClick={() => layout.show(panel)}
          >
            <Icon name={iconOf(panel)} />
            {t.shell[panel]}
          </button>
        ))}
      </nav>
    </header>
  );
}

function Bar({ panels, rest }: { panels: Panel[]; rest: Panel[] }) {
  const { layout, figure, console } = useApp();
  const more = (event: MouseEvent) =>
    showMenu(
      event,
      t.shell.more,
      rest.map((panel) => ({
        label: t.shell[panel],
        icon: iconOf(panel),
        onPick: () => layout.choose(panel),
      })),
    );
  return (
    <nav class="bar" aria-label={t.shell.panels}>
      {panels.map((panel) => (
        <button
          type="button"
          key={panel}
          class={layout.isShown(panel) ? 'on' : ''}
          aria-label={t.shell[panel]}
          aria-current={layout.isShown(panel) ? 'page' : undefined}
          onClick={() => {
            closeMenu();
            layout.choose(panel);
          }}
        >
          <Icon name={iconOf(panel)} />
          <span>{t.shell[panel]}</span>
          {panel === 'figure' && figure.kind.value !== 'none' && !layout.isShown('figure') && <i class="dot" />}
          {panel === 'console' && console.busy.value && !layout.isShown('console') && <i class="dot busy" />}
        </button>
      ))}
      {rest.length > 0 && (
        <button type="button" class={rest.includes(layout.front.value) ? 'on' : ''} aria-haspopup="menu" onClick={more}>
          <Icon name="more" />
          <span>{t.shell.more}</span>
        </button>
      )}
    </nav>
  );
}

function ConnectionBar() {
  const { session } = useApp();
  const state = session.state.value;
  if (state !== 'lost' && state !== 'refused') return null;
  const [title, text] =
    state === 'lost'
      ? [t.connection.lost, t.connection.lostText]
      : [t.connection.refused, t.connection.refusedText];
  return (
    <div class="connection-bar" role="alert">
      <Icon name="offline" />
      <span>
        <b>{title}</b> <span class={state === 'lost' ? 'wide' : ''}>{text}</span>
      </span>
      <button type="button" class="button" onClick={() => session.retry()}>
        {t.connection.retry}
      </button>
    </div>
  );
}

const kToastTime = 4500;
function Toast() {
  const { dialogs } = useApp();
  const toast = dialogs.toast.value;
  useEffect(() => {
    if (!toast) return;
    const timer = setTimeout(
      () => {
        dialogs.toast.value = null;
      },
      toast.action ? kToastTime * 3 : kToastTime,
    );
    return () => clearTimeout(timer);
  }, [toast]);
  return (
    <div class="toast-frame" role="status">
      {toast && (
        <div class="toast" onPointerDown={keepFocus}>
          <span>{toast.text}</span>
          {toast.action && (
            <button
              type="button"
              onClick={() => {
                dialogs.toast.value = null;
                toast.onAction?.();
              }}
            >
              {toast.action}
            </button>
          )}
        </div>
      )}
    </div>
  );
}
