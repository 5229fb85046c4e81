/// Files that are dropped anywhere on the page are imported: the browser would leave the app to show
/// them. Other data counts where the files are listed.

import { useEffect } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import { useApp } from '../shell/context';
import type { App } from '../shell/core/app';
import { text as t } from '../texts/texts';
import { dropped } from './picking';

const isWanted = ({ dataTransfer, target }: DragEvent) =>
  dataTransfer?.types.includes('Files') || (target instanceof Element && target.closest('.folder') !== null);

async function take(app: App, data: DataTransfer): Promise<void> {
  const found = await dropped(data);
  if (found === null) app.files.refuseDrop();
  else await app.files.import(found);
}

/// Lies over the page while something is held above it that can be dropped.
export function DropSign() {
  const app = useApp();
  const held = useSignal(false);
  useEffect(() => {
    const over = (event: DragEvent) => {
      held.value = isWanted(event);
      if (held.value) event.preventDefault();
    };
    const leave = ({ relatedTarget }: DragEvent) => {
      if (!relatedTarget) held.value = false;
    };
    const drop = (event: DragEvent) => {
      held.value = false;
      if (!isWanted(event)) return;
      event.preventDefault();
      event.stopPropagation(); // a code field would take the text of the file
      void take(app, event.dataTransfer!);
    };
    document.addEventListener('dragover', over, true);
    document.addEventListener('dragleave', leave, true);
    document.addEventListener('drop', drop, true);
  }, []);
  if (!held.value) return null;
  return (
    <div class="drop-sign" aria-hidden="true">
      {t.files.dropHere}
    </div>
  );
}
