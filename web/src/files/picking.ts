/// Files from the device: picked or dropped.

import type { Picked } from './core/files';

const ofFile = (file: File): Picked => ({ name: file.name, size: file.size, isFolder: false, text: () => file.text() });

export function pickFiles(): Promise<Picked[]> {
  return new Promise((resolve) => {
    const input = document.createElement('input');
    input.type = 'file';
    input.multiple = true;
    input.addEventListener('change', () => resolve([...(input.files ?? [])].map(ofFile)));
    input.addEventListener('cancel', () => resolve([]));
    input.click();
  });
}

/// What was dropped; null when it is neither a file nor plain text.
export async function dropped(data: DataTransfer): Promise<Picked[] | null> {
  const entries = [...data.items].filter((item) => item.kind === 'file');
  if (entries.length) {
    return entries.map((item) => {
      const entry = item.webkitGetAsEntry?.();
      const file = item.getAsFile();
      if (entry?.isDirectory || !file) {
        return { name: entry?.name ?? '', size: 0, isFolder: true, text: () => Promise.resolve('') };
      }
      return ofFile(file);
    });
  }
  const text = data.getData('text/plain');
  return text ? [{ name: 'dropped.txt', size: text.length, isFolder: false, text: () => Promise.resolve(text) }] : null;
}
