/// Names and paths as the file panel needs them.

export const joined = (folder: string, name: string) => (folder ? `${folder}/${name}` : name);
export const baseOf = (path: string) => path.slice(path.lastIndexOf('/') + 1);
export const parentOf = (path: string) => path.slice(0, Math.max(0, path.lastIndexOf('/')));

/// Where the name ends and its extension begins: what a rename selects.
export function stemLength(name: string): number {
  const dot = name.lastIndexOf('.');
  return dot > 0 ? dot : name.length;
}

const kTextExtensions = ['m', 'csv', 'txt', 'dat'];
export const isTextName = (name: string) => kTextExtensions.includes(name.slice(name.lastIndexOf('.') + 1));

/// The folders from the root to the path: for the way shown above the list.
export function trail(path: string): { name: string; path: string }[] {
  const parts = path ? path.split('/') : [];
  return parts.map((name, k) => ({ name, path: parts.slice(0, k + 1).join('/') }));
}

export function sizeText(bytes: number): string {
  if (bytes < 1000) return `${bytes} B`;
  if (bytes < 1e6) return `${(bytes / 1000).toFixed(bytes < 1e4 ? 1 : 0)} kB`;
  if (bytes < 1e9) return `${(bytes / 1e6).toFixed(bytes < 1e7 ? 1 : 0)} MB`;
  return `${(bytes / 1e9).toFixed(1)} GB`;
}
