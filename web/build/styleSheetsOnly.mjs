// CodeMirror puts its styles into the page as a style element, which a strict policy refuses. Its
// style module can also use constructed style sheets, but does so in shadow roots alone; this plugin
// takes away that condition, so that the policy needs neither "unsafe-inline" nor a nonce.

import { readFile } from 'node:fs/promises';

const condition = '!root.head && root.adoptedStyleSheets';

export const styleSheetsOnly = {
  name: 'style-sheets-only',
  setup(build) {
    build.onLoad({ filter: /style-mod[/\\]src[/\\]style-mod\.js$/ }, async ({ path }) => {
      const source = await readFile(path, 'utf8');
      if (!source.includes(condition)) throw new Error(`style-mod has changed: look at ${path}`);
      return { contents: source.replace(condition, 'root.adoptedStyleSheets'), loader: 'js' };
    });
  },
};
