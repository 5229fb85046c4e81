// Runs a TypeScript file of the tests under Node: `node build/script.mjs FILE [ARGS]`.

import { rm } from 'node:fs/promises';
import { pathToFileURL } from 'node:url';
import { build } from 'esbuild';

const [source, ...args] = process.argv.slice(2);
const bundled = `${source}.${process.pid}.mjs`;
await build({
  entryPoints: [source],
  outfile: bundled,
  bundle: true,
  platform: 'node',
  format: 'esm',
  target: 'node18',
  packages: 'external',
});
process.argv = [process.argv[0], source, ...args];
try {
  await import(pathToFileURL(bundled));
} finally {
  await rm(bundled, { force: true });
}
