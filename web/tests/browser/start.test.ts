/// The first moments: what is typed before the app is there, and a slow network.

import { expect, test } from 'vitest';
import { command, useBrowser } from './browser';
import { fillSession } from './stock';

const { open } = useBrowser();

/// What others wait for.
function gate(): { opened: Promise<void>; open(): void } {
  let open = () => {};
  const opened = new Promise<void>((resolve) => {
    open = resolve;
  });
  return { opened, open: () => open() };
}

test('what is typed before the app is there is taken over, and runs', async () => {
  const parts = gate();
  const { page, session } = await open('desk', {
    theme: 'dark',
    before: (each) =>
      each.route('**/part-*.js', async (route) => {
        await parts.opened;
        await route.continue();
      }),
    meanwhile: async (each) => {
      await each.locator('#first textarea:focus').waitFor();
      expect(await each.evaluate(() => document.documentElement.dataset.theme)).toBe('dark');
      await each.keyboard.type('early = 1\n');
      parts.open();
    },
  });
  await expect.poll(() => session.state.history[session.state.history.length - 1]).toBe('early = 1');
  expect(await page.locator('#first').count()).toBe(0);
  await expect.poll(() => page.locator('.composer .cm-content:focus').count()).toBe(1);
});

test('the first field stands where the input will be', async () => {
  for (const size of ['phone', 'lying', 'tablet', 'desk'] as const) {
    let first = { x: 0, width: 0, y: 0, height: 0 };
    const parts = gate();
    const { page } = await open(size, {
      before: (each) =>
        each.route('**/part-*.js', async (route) => {
          await parts.opened;
          await route.continue();
        }),
      meanwhile: async (each) => {
        first = (await each.locator('.first-composer').boundingBox())!;
        parts.open();
      },
    });
    const then = (await page.locator('.composer').boundingBox())!;
    for (const side of ['x', 'width', 'y', 'height'] as const)
      expect(Math.abs(first[side] - then[side]), `${size} ${side}`).toBeLessThan(3);
  }
});

test('over a slow network the app comes, runs and stops', async () => {
  const { page, session } = await open('phone', {
    fill: fillSession,
    before: async (each) => {
      const client = await each.context().newCDPSession(each);
      await client.send('Network.enable');
      const slow = { offline: false, latency: 400, downloadThroughput: 50_000, uploadThroughput: 20_000 };
      await client.send('Network.emulateNetworkConditions', slow);
    },
    meanwhile: async (each) => {
      await each.locator('#first textarea').fill('x = 1:3');
    },
  });
  await expect.poll(() => page.locator('.composer .cm-content').innerText()).toBe('x = 1:3');
  const receive = session.receive.bind(session);
  const answers = gate();
  session.receive = async (text, send) => {
    await answers.opened;
    return receive(text, send);
  };
  await page.getByRole('button', { name: 'Run', exact: true }).last().click();
  // Pressed twice it runs once, since Stop takes its place before the engine has answered.
  await page.getByRole('button', { name: 'Stop' }).first().waitFor();
  answers.open();
  await page.locator('.item', { hasText: 'x =' }).last().waitFor();
  await command(page, 'forever');
  await page.getByRole('button', { name: 'Stop' }).first().click();
  await page.getByRole('button', { name: 'Run', exact: true }).last().waitFor();
});
