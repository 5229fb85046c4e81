/// What is large, hostile or slow: many items, long lines, texts that look like pages, a second
/// window, a full device, the size of the first load.

import { readFileSync, statSync } from 'node:fs';
import { gzipSync } from 'node:zlib';
import { expect, test } from 'vitest';
import { command, kDist, settled, show, useBrowser } from './browser';
import { fillSession } from './stock';

const { open, expectRefusals } = useBrowser();

test('the first load is at most 180 kB compressed, code and styles, and 45 kB of fonts', async () => {
  const { page } = await open('desk');
  await page.waitForLoadState('networkidle');
  await page.locator('.welcome .tok-green').first().waitFor();
  const fetched = await page.evaluate(() =>
    performance.getEntriesByType('resource').map((entry) => new URL(entry.name).pathname),
  );
  const size = (path: string) =>
    path.endsWith('.woff2') ? statSync(kDist + path).size : gzipSync(readFileSync(kDist + path), { level: 9 }).length;
  const assets = ['/index.html', ...new Set(fetched)].filter(
    (path) => /\.(js|css|html|woff2)$/.test(path) && path !== '/worker.js',
  );
  const sum = (paths: string[]) => paths.reduce((total, path) => total + size(path), 0);
  expect(assets.length).toBeGreaterThan(4);
  expect(sum(assets.filter((path) => !path.endsWith('.woff2')))).toBeLessThan(180_000);
  expect(sum(assets.filter((path) => path.endsWith('.woff2')))).toBeLessThan(45_000);
});

test('of 10,000 items only those in view are in the page, and scrolling finds the others', async () => {
  const { page } = await open('phone');
  await command(page, 'many(10000)');
  await page.locator('.item', { hasText: '9999' }).waitFor();
  expect(await page.locator('.item').count()).toBeLessThan(120);
  await page.locator('.items').press('Home');
  await page.locator('.item', { hasText: 'many(10000)' }).waitFor();
  const most = await page.evaluate(async () => {
    const scroller = document.querySelector('.items')!;
    let count = 0;
    for (let k = 0; k < 60; k++) {
      scroller.scrollTop += 4000;
      await new Promise(requestAnimationFrame);
      count = Math.max(count, document.querySelectorAll('.item').length);
    }
    return count;
  });
  expect(most).toBeLessThan(120);
  await page.getByRole('button', { name: 'To the end' }).click();
  await page.locator('.item', { hasText: '9999' }).waitFor();
});

test('a line of 10 MB is shown in part and freezes nothing', async () => {
  const { page, session } = await open('desk');
  session.add({ contentType: 'charArray', text: 'x'.repeat(10_000_000) });
  await page.getByRole('button', { name: /Show more/ }).waitFor();
  await command(page, 'after = 1');
  await page.getByText('after =', { exact: false }).first().waitFor();
});

test('hostile texts are shown as texts, wherever they come from', async () => {
  const hostile = '<img src=x onerror="window.harmed=1"><script>window.harmed=1</script>';
  const { page, session } = await open('desk', {
    fill: (each) => {
      fillSession(each);
      each.state.variables.push({ name: hostile, class: hostile, size: [1, 1], bytes: 8, preview: hostile });
      each.state.files.set(`${hostile}.m`, hostile);
      each.state.saved.push({ id: '1', name: hostile, timeStamp: 0, thumbnail: '"><script>window.harmed=1</script>' });
    },
  });
  session.add({ contentType: 'charArray', varName: hostile, text: hostile });
  session.add({ contentType: 'error', text: hostile, message: { file: hostile, line: 1, column: 1 } });
  session.notify('console/progress', { text: hostile });
  session.setStatus('running');
  session.setStatus('idle');
  await page.getByText(hostile).first().waitFor();
  await page.getByRole('button', { name: 'List', exact: true }).click();
  await page.locator('.figure-row b', { hasText: 'onerror' }).waitFor();
  await show(page, 'Help');
  await page.locator('[data-panel="help"]').getByRole('searchbox').fill(hostile);
  await page.getByText('No Item Found').waitFor();
  expect(await page.evaluate(() => 'harmed' in window)).toBe(false);
  expect(await page.locator('#app script, #app img[src="x"]').count()).toBe(0);
});

test('a hostile help page reaches nothing', async () => {
  const { page, session } = await open('desk', { fill: fillSession });
  await show(page, 'Help');
  await page.getByRole('button', { name: 'Functions' }).click();
  await page.getByRole('button', { name: 'mean' }).click();
  await page.frameLocator('.help-frame').locator('math').first().waitFor();
  const frame = page.frames().find((each) => each.url().endsWith('/frame/help.html'))!;
  expect(await frame.evaluate(() => 'harmed' in window)).toBe(false);
  expect(await frame.locator('script:not([src^="/frame/"]), [onerror], [style*="red"]').count()).toBe(0);
  // What a page could do if a script of it ran all the same.
  const reached = await frame.evaluate(async (address) => {
    const tries: Record<string, () => unknown> = {
      page: () => parent.document.title,
      storage: () => localStorage.length,
      cookie: () => document.cookie,
      request: () => fetch('/admission', { method: 'POST' }),
      session: () =>
        new Promise((resolve, reject) => {
          const socket = new WebSocket(address.replace('http', 'ws') + 'session');
          socket.onopen = resolve;
          socket.onerror = reject;
        }),
    };
    const done: string[] = [];
    for (const [name, work] of Object.entries(tries)) {
      try {
        await work();
        done.push(name);
      } catch {
        /* as it should be */
      }
    }
    return done;
  }, new URL('/', page.url()).href);
  expect(reached).toEqual([]);
  // Later than a tap counts.
  await frame.evaluate(() => setTimeout(() => parent.postMessage({ kind: 'run', text: 'evil = 1' }, '*'), 5500));
  await page.waitForTimeout(6000);
  expect(session.state.history.join()).not.toContain('evil');
  expectRefusals(/Content Security Policy|^policy: connect-src/);
});

test('two windows show one session', async () => {
  const { page, context, server } = await open('desk');
  const second = await context.newPage();
  await second.goto(server.address);
  await command(page, 'shared = 1');
  await second.getByText('shared =', { exact: false }).first().waitFor();
});

test('an error of any method is an alert or a line, and the panels stay', async () => {
  const { page, session } = await open('desk', { fill: fillSession });
  await page.locator('.file-row', { hasText: 'notes.txt' }).waitFor();
  await settled(() => session.requests.length); // what the app asks for at its start
  const receive = session.receive.bind(session);
  session.receive = async (text, send) => {
    const { id, method } = JSON.parse(text);
    if (/highlight|history|items|complete|layouts/i.test(method)) return receive(text, send);
    send(
      JSON.stringify({
        jsonrpc: '2.0',
        id,
        error: { code: 1, message: 'Disk full', data: { title: 'Disk full', text: method } },
      }),
    );
  };
  await command(page, 'x = 1');
  await page.getByRole('heading', { name: 'Disk full' }).waitFor();
  await page.keyboard.press('Escape');
  await page.locator('.file-row', { hasText: 'notes.txt' }).getByRole('button').first().click();
  await page.getByRole('heading', { name: 'Disk full' }).waitFor();
  await page.keyboard.press('Enter');
  // From here on an alert is closed when it stands in the way, whenever it comes.
  await page.addLocatorHandler(page.locator('dialog'), () => page.keyboard.press('Escape'));
  for (const panel of ['Help', 'Settings', 'Figure']) {
    await page.locator('nav').getByRole('button', { name: panel, exact: true }).click();
    await page.locator(`[data-panel="${panel.toLowerCase()}"]`).waitFor();
  }
  await expect.poll(() => page.locator('.file-row').count()).toBeGreaterThan(3);
});

test("the worker keeps the app's own files, and the app opens without the server", async () => {
  const { page, server } = await open('phone');
  await page.evaluate(async () => {
    await navigator.serviceWorker.ready; // it is when all files are kept
  });
  server.server.close();
  server.drop();
  await page.reload();
  await page.getByText('The engine cannot be reached').waitFor();
  const kept = await page.evaluate(async () =>
    (await (await caches.open((await caches.keys())[0]!)).keys()).map((each) => new URL(each.url).pathname),
  );
  expect(kept.filter((path) => !/^\/($|assets\/|icon|manifest|examples\.json)/.test(path))).toEqual([]);
});
