// Builds the app into dist/: bundles with hashed names, the page, the service worker with the exact
// list of the app's files, the examples, the licences, and a compressed twin of every text.
// `node build/build.mjs [DIRECTORY]`

import { createHash } from 'node:crypto';
import { mkdir, readFile, readdir, rm, writeFile, copyFile } from 'node:fs/promises';
import { dirname, join, relative, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { brotliCompressSync, constants, gzipSync } from 'node:zlib';
import { build } from 'esbuild';
import { oneFirstPart } from './oneFirstPart.mjs';
import { styleSheetsOnly } from './styleSheetsOnly.mjs';

const root = resolve(dirname(fileURLToPath(import.meta.url)), '..');
const out = resolve(process.argv[2] ?? join(root, 'dist'));
const assets = join(out, 'assets');
const kMain = 'src/shell/main.tsx';
const kFirst = 'src/first/first.ts';
const kFrame = 'src/help/frame/frame.ts';

const common = {
  absWorkingDir: root,
  outdir: assets,
  publicPath: '/assets',
  bundle: true,
  minify: true,
  metafile: true,
  target: ['es2021', 'safari15.4'],
  entryNames: '[name]-[hash]',
  legalComments: 'none',
  logLevel: 'warning',
};

async function bundle() {
  const result = await build({
    ...common,
    entryPoints: { app: kMain },
    splitting: true,
    format: 'esm',
    jsx: 'automatic',
    jsxImportSource: 'preact',
    chunkNames: 'part-[hash]',
    assetNames: '[name]-[hash]',
    loader: { '.woff2': 'file' },
    plugins: [styleSheetsOnly, oneFirstPart(join(root, kMain))],
  });
  await dropSecondStyles(result.metafile.outputs);
  return result.metafile;
}

/// The later parts, which import the app, get its styles once more.
async function dropSecondStyles(outputs) {
  const parts = Object.keys(outputs).filter((path) => /[/\\]part-[^/\\]*\.css$/.test(path));
  for (const path of parts) await rm(join(root, path));
}

/// The script that the page has before the app.
async function bundleFirst() {
  const { metafile } = await build({ ...common, entryPoints: { first: kFirst }, format: 'iife' });
  return addressOf(Object.keys(metafile.outputs)[0]);
}

const addressOf = (path) => `/${relative(out, resolve(root, path)).split('\\').join('/')}`;

/// The part in which the app stands, and the styles. The entry itself only imports that part.
function firstLoad(outputs) {
  const [, entry] = Object.entries(outputs).find(([, each]) => each.entryPoint === kMain);
  const parts = entry.imports.filter(({ kind }) => kind === 'import-statement');
  if (parts.length !== 1) throw new Error(`the first load has ${parts.length} parts instead of one`);
  return { script: addressOf(parts[0].path), style: addressOf(entry.cssBundle) };
}

async function writePage(first, { script, style }) {
  const page = (await readFile(join(root, 'static/index.html'), 'utf8'))
    .replace('%STYLE%', style)
    .replace('%FIRST%', first)
    .replaceAll('%SCRIPT%', script);
  await writeFile(join(out, 'index.html'), page);
}

/// The frame of the help pages, in a folder of its own, which the server gives a policy of its own.
async function writeFrame() {
  const folder = join(out, 'frame');
  const { metafile } = await build({
    ...common,
    entryPoints: { frame: kFrame, look: 'src/help/frame/frame.css', formulas: 'src/help/frame/formulas.ts' },
    outdir: folder,
    publicPath: '/frame',
    assetNames: '[name]-[hash]',
    loader: { '.woff2': 'file' },
    format: 'iife',
  });
  const address = (name) => addressOf(Object.keys(metafile.outputs).find((path) => path.includes(`/${name}-`)));
  const page = (await readFile(join(root, 'static/help.html'), 'utf8'))
    .replace('%STYLE%', address('look'))
    .replace('%SCRIPT%', address('frame'))
    .replace('%FORMULAS%', address('formulas'));
  await writeFile(join(folder, 'help.html'), page);
  return metafile.inputs;
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
  const paths = (await filesBelow(out)).filter((path) => !/licences\.txt$|[/\\]frame[/\\]/.test(path));
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
await writePage(await bundleFirst(), firstLoad(outputs));
for (const name of await readdir(join(root, 'static'))) {
  if (!name.endsWith('.html')) await copyFile(join(root, 'static', name), join(out, name));
}
await writeExamples();
await writeLicences({ ...inputs, ...(await writeFrame()) });
await writeWorker();
await compress();
