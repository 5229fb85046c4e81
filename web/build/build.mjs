// Builds the app into dist/: bundles with hashed names, the page, the service worker with the exact
// list of the app's files, the examples, the licences, and a compressed twin of every text.
// `node build/build.mjs [DIRECTORY]`

import { createHash } from 'node:crypto';
import { mkdir, readFile, readdir, rm, writeFile, copyFile } from 'node:fs/promises';
import { dirname, join, relative, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { brotliCompressSync, constants, gzipSync } from 'node:zlib';
import { build } from 'esbuild';
import { styleSheetsOnly } from './styleSheetsOnly.mjs';

const root = resolve(dirname(fileURLToPath(import.meta.url)), '..');
const out = resolve(process.argv[2] ?? join(root, 'dist'));
const assets = join(out, 'assets');

async function bundle() {
  const result = await build({
    absWorkingDir: root,
    entryPoints: { app: 'src/shell/main.tsx' },
    outdir: assets,
    publicPath: '/assets',
    bundle: true,
    splitting: true,
    format: 'esm',
    minify: true,
    metafile: true,
    target: ['es2021', 'safari15.4'],
    jsx: 'automatic',
    jsxImportSource: 'preact',
    entryNames: '[name]-[hash]',
    chunkNames: 'part-[hash]',
    assetNames: '[name]-[hash]',
    loader: { '.woff2': 'file' },
    legalComments: 'none',
    logLevel: 'warning',
    plugins: [styleSheetsOnly],
  });
  return result.metafile;
}

const addressOf = (path) => `/${relative(out, resolve(root, path)).split('\\').join('/')}`;

/// The script, the parts that it needs at once, and the styles.
function firstLoad(outputs) {
  const [scriptPath, script] = Object.entries(outputs).find(([, each]) => each.entryPoint === 'src/shell/main.tsx');
  const parts = new Set();
  const visit = (each) =>
    each.imports
      .filter((i) => i.kind === 'import-statement')
      .forEach(({ path }) => {
        if (!parts.has(path)) {
          parts.add(path);
          visit(outputs[path]);
        }
      });
  visit(script);
  return { script: addressOf(scriptPath), style: addressOf(script.cssBundle), parts: [...parts].map(addressOf) };
}

async function writePage({ script, style, parts }) {
  const page = (await readFile(join(root, 'static/index.html'), 'utf8'))
    .replace('%STYLE%', style)
    .replace('%SCRIPT%', script)
    .replace('%PRELOADS%', parts.map((part) => `<link rel="modulepreload" href="${part}">`).join('\n'));
  await writeFile(join(out, 'index.html'), page);
}

async function writeExamples() {
  const folder = join(root, '../examples');
  const names = (await readdir(folder)).filter((name) => /\.(m|csv|txt|dat)$/.test(name)).sort();
  const texts = await Promise.all(names.map(async (name) => [name, await readFile(join(folder, name), 'utf8')]));
  await writeFile(join(out, 'examples.json'), JSON.stringify(Object.fromEntries(texts)));
}

/// The licence of every package of which something stands in the bundles.
async function writeLicences(inputs) {
  const packages = [
    ...new Set(
      Object.keys(inputs)
        .map((path) => /node_modules\/((?:@[^/]+\/)?[^/]+)/.exec(path)?.[1])
        .filter(Boolean),
    ),
  ];
  const texts = await Promise.all(
    packages.sort().map(async (name) => {
      const folder = join(root, 'node_modules', name);
      const { version, license } = JSON.parse(await readFile(join(folder, 'package.json'), 'utf8'));
      const file = (await readdir(folder)).find((each) => /^licen[cs]e/i.test(each));
      return `${name} ${version} (${license})\n\n${file ? await readFile(join(folder, file), 'utf8') : ''}`;
    }),
  );
  await writeFile(join(out, 'licences.txt'), texts.join(`\n${'-'.repeat(80)}\n\n`));
}

async function filesBelow(folder) {
  const entries = await readdir(folder, { withFileTypes: true });
  const nested = await Promise.all(
    entries.map((entry) => {
      const path = join(folder, entry.name);
      return entry.isDirectory() ? filesBelow(path) : [path];
    }),
  );
  return nested.flat().sort();
}

async function writeWorker() {
  const paths = (await filesBelow(out)).filter((path) => !/licences\.txt$/.test(path));
  const hash = createHash('sha256');
  for (const path of paths) hash.update(addressOf(path)).update(await readFile(path));
  const files = ['/', ...paths.map(addressOf).filter((address) => address !== '/index.html')];
  const worker = (await readFile(join(root, 'src/install/worker.js'), 'utf8'))
    .replace('%VERSION%', hash.digest('hex').slice(0, 12))
    .replace("'%FILES%'", JSON.stringify(files));
  await writeFile(join(out, 'worker.js'), worker);
}

async function compress() {
  for (const path of await filesBelow(out)) {
    if (!/\.(js|css|html|json|svg|txt|webmanifest)$/.test(path)) continue;
    const content = await readFile(path);
    await writeFile(`${path}.gz`, gzipSync(content, { level: 9 }));
    await writeFile(`${path}.br`, brotliCompressSync(content, { params: { [constants.BROTLI_PARAM_QUALITY]: 11 } }));
  }
}

await rm(out, { recursive: true, force: true });
await mkdir(assets, { recursive: true });
const { outputs, inputs } = await bundle();
await writePage(firstLoad(outputs));
for (const name of await readdir(join(root, 'static'))) {
  if (name !== 'index.html') await copyFile(join(root, 'static', name), join(out, name));
}
await writeExamples();
await writeLicences(inputs);
await writeWorker();
await compress();
