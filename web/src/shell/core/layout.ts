/// Which panels are seen, at each size of the window. A phone upright shows one panel; a phone lying
/// and a tablet show the console and one other; a desk shows columns.

import { computed, signal } from '@preact/signals-core';
import type { Store } from '../../engine/core/ports';

export type Panel = 'console' | 'editor' | 'figure' | 'files' | 'workspace' | 'help' | 'settings';
export type LayoutMode = 'phone' | 'lying' | 'tablet' | 'desk';
export type Divider = 'left' | 'right' | 'center' | 'pair' | 'side';

/// Shares of each divider: of the window for left and right, of the space for the others.
const kShares: Record<Divider, number> = { left: 0.19, right: 0.34, center: 0.56, pair: 0.5, side: 0.55 };
const kLimits: Record<Divider, [number, number]> = {
  left: [0.12, 0.3],
  right: [0.2, 0.5],
  center: [0.15, 0.85],
  pair: [0.25, 0.75],
  side: [0.2, 0.8],
};
const kSidePanels: Panel[] = ['figure', 'help', 'settings'];

export function modeFor(width: number, height: number): LayoutMode {
  if (width >= 1100 && height >= 520) return 'desk';
  if (height < 520 && width > height) return 'lying';
  return width < 680 ? 'phone' : 'tablet';
}

export class Layout {
  readonly mode = signal<LayoutMode>('phone');
  /// The panel in front: all of a phone, the companion of the console on two-panel sizes.
  readonly front = signal<Panel>('console');
  readonly side = signal<Panel>('figure');
  readonly companion = signal<Panel>('editor');
  /// Two-panel sizes only: the console takes all the room.
  readonly alone = signal(false);
  /// A panel that has taken all the room, until it is resized again.
  readonly maximized = signal<Panel | null>(null);
  readonly sidebarShown = signal(true);
  readonly shares = signal<Record<Divider, number>>({ ...kShares });

  readonly visible = computed<Panel[]>(() => {
    if (this.maximized.value && this.mode.value !== 'phone') return [this.maximized.value];
    switch (this.mode.value) {
      case 'phone':
        return [this.front.value];
      case 'desk':
        return [
          ...(this.sidebarShown.value ? (['files', 'workspace'] as Panel[]) : []),
          'editor',
          'console',
          this.side.value,
        ];
      default:
        return this.alone.value ? ['console'] : [this.companion.value, 'console'];
    }
  });

  constructor(private readonly store: Store) {
    const saved = store.read('layout');
    if (!saved) return;
    try {
      const { shares, sidebar } = JSON.parse(saved);
      for (const name of Object.keys(kShares) as Divider[]) this.move(name, Number(shares?.[name] ?? kShares[name]));
      this.sidebarShown.value = sidebar !== false;
    } catch {
      /* an unreadable text counts as none */
    }
  }

  resize(width: number, height: number): void {
    this.mode.value = modeFor(width, height);
  }

  /// Brings the panel into view.
  show(panel: Panel): void {
    if (panel !== this.maximized.value) this.maximized.value = null;
    this.front.value = panel;
    if (kSidePanels.includes(panel)) this.side.value = panel;
    if (panel !== 'console') {
      this.companion.value = panel;
      this.alone.value = false;
    }
    if (this.mode.value === 'desk' && (panel === 'files' || panel === 'workspace')) this.toggleSidebar(true);
  }

  /// The Resize button: the panel takes all the room, or gives it back.
  resizePanel(panel: Panel): void {
    this.maximized.value = this.maximized.value === panel ? null : panel;
  }

  /// A tap in the bar: shows the panel; a tap on the console beside another gives it all the room.
  choose(panel: Panel): void {
    const twoPanels = this.mode.value === 'lying' || this.mode.value === 'tablet';
    if (twoPanels && panel === 'console') this.alone.value = !this.alone.value;
    else this.show(panel);
  }

  isShown(panel: Panel): boolean {
    return this.visible.value.includes(panel);
  }

  toggleSidebar(shown = !this.sidebarShown.value): void {
    this.sidebarShown.value = shown;
    this.save();
  }

  move(divider: Divider, share: number): void {
    const [low, high] = kLimits[divider];
    const kept = Number.isFinite(share) ? Math.min(high, Math.max(low, share)) : kShares[divider];
    this.shares.value = { ...this.shares.value, [divider]: kept };
  }

  save(): void {
    this.store.write('layout', JSON.stringify({ shares: this.shares.value, sidebar: this.sidebarShown.value }));
  }
}
