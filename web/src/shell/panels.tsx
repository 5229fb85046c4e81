/// The panels by name, each caught when it fails, so that a fault of one leaves the others standing.

import { Component, type ComponentChildren, type ComponentType } from 'preact';
import { lazy } from '../design/lazy';
import { Empty } from '../design/widgets';
import type { IconName } from '../design/icons';
import { ConsolePanel } from '../console/ConsolePanel';
import { EditorPanel } from '../editor/EditorPanel';
import { FigurePanel } from '../figure/FigurePanel';
import { FilesPanel } from '../files/FilesPanel';
import { text as t } from '../texts/texts';
import type { Panel } from './core/layout';
import { useApp } from './context';

export const kOrder: Panel[] = ['console', 'editor', 'figure', 'files', 'workspace', 'help', 'settings'];
export const iconOf = (panel: Panel): IconName => panel;

const kViews: Record<Panel, ComponentType> = {
  console: ConsolePanel,
  editor: EditorPanel,
  figure: FigurePanel,
  files: FilesPanel,
  workspace: lazy(() => import('../workspace/WorkspacePanel')),
  help: lazy(() => import('../help/HelpPanel')),
  settings: lazy(() => import('../settings/SettingsPanel')),
};

class Guard extends Component<{ onFault(error: unknown): void; children: ComponentChildren }, { failed: boolean }> {
  override state = { failed: false };
  override componentDidCatch(error: unknown): void {
    this.props.onFault(error);
    this.setState({ failed: true });
  }
  override render() {
    if (!this.state.failed) return this.props.children;
    return (
      <Empty title={t.shell.failed}>
        <button type="button" class="button" onClick={() => this.setState({ failed: false })}>
          {t.shell.again}
        </button>
      </Empty>
    );
  }
}

export function PanelView({ name }: { name: Panel }) {
  const { dialogs } = useApp();
  const View = kViews[name];
  return (
    <Guard key={name} onFault={(error) => dialogs.note(String((error as Error)?.stack ?? error))}>
      <View />
    </Guard>
  );
}
