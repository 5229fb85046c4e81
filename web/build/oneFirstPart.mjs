// The bundler cuts what the app shares with its later parts into a file for each set of parts that
// share it: a dozen small files at the first load. This plugin has every later part import the whole
// app, which is there already, so that one file holds all that the first load needs.

import { readFile } from 'node:fs/promises';

export const oneFirstPart = (main) => ({
  name: 'one-first-part',
  setup(build) {
    const later = new Set();
    build.onResolve({ filter: /^\./, namespace: 'file' }, async ({ path, kind, importer, resolveDir }) => {
      if (kind !== 'dynamic-import') return;
      const found = await build.resolve(path, { kind: 'import-statement', importer, resolveDir });
      later.add(found.path);
      return found;
    });
    build.onLoad({ filter: /[/\\]src[/\\].*\.tsx?$/ }, async ({ path }) => {
      if (!later.has(path)) return;
      const contents = `${await readFile(path, 'utf8')}\nimport ${JSON.stringify(main)};\n`;
      return { contents, loader: path.endsWith('x') ? 'tsx' : 'ts' };
    });
  },
});
