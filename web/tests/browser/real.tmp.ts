import { chromium } from 'playwright-core';
import { serve } from './server';
const s = await serve(new URL('../../dist', import.meta.url).pathname, {
  path: '/work/trees/web/build/release/kelo',
  workdir: '/tmp/kw2',
});
const b = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
const out = new URL('./out/', import.meta.url).pathname + 'r-';
for (const [name, w, h, touch, theme] of [
  ['desk', 1440, 900, false, 'light'],
  ['phone', 390, 844, true, 'light'],
] as const) {
  const c = await b.newContext({
    viewport: { width: w, height: h },
    hasTouch: touch,
    isMobile: touch,
    colorScheme: theme,
    deviceScaleFactor: touch ? 2 : 1,
  });
  const p = await c.newPage();
  p.on('console', (m) => {
    if (m.type() === 'error') console.log('console', m.text());
  });
  p.on('pageerror', (e) => console.log('page', e.message));
  await p.goto(s.address);
  await p.waitForTimeout(1500);
  if (await p.locator('dialog').count()) {
    console.log(await p.locator('dialog').innerText());
    await p.keyboard.press('Escape');
    await p.waitForTimeout(300);
  }
  await p.screenshot({ path: out + name + '-start.png' });
  if (await p.getByRole('button', { name: 'Leave the tour' }).count())
    await p.getByRole('button', { name: 'Leave the tour' }).click();
  const run = async (t: string) => {
    await p.locator('.composer .cm-content').click();
    await p.keyboard.insertText(t);
    await p.getByRole('button', { name: 'Run', exact: true }).last().click();
    await p.waitForTimeout(500);
  };
  await run('A = rand(6)*1000');
  await run('for k = 1:3\n    s(k) = sum(1 ./ (1:k));\nend\ns');
  await run('y = 2*nosuch');
  await run('z = [1+2i 3.5; 4 5]');
  await run("w.a = 1; w.b = 'text'; w");
  await run('inv([1 2; 2 4])');
  await run('tour');
  await p.waitForTimeout(800);
  await p.screenshot({ path: out + name + '-console.png' });
  await p.locator('.composer .cm-content').click();
  await p.keyboard.type('x = lin');
  await p.waitForTimeout(600);
  await p.screenshot({ path: out + name + '-typing.png' });
  await p.keyboard.press('Alt+Digit5');
  await p.waitForTimeout(500);
  await p.screenshot({ path: out + name + '-vars.png' });
  for (const v of ['A', 'z', 'w']) {
    await p.locator('.variables button', { has: p.locator('b', { hasText: new RegExp(`^${v}$`) }) }).click();
    await p.waitForTimeout(500);
    await p.screenshot({ path: out + name + `-var-${v}.png` });
    await p.getByRole('button', { name: 'All variables' }).click();
  }
  await p.keyboard.press('Alt+Digit6');
  await p.waitForTimeout(600);
  await p.screenshot({ path: out + name + '-help.png' });
  await p.locator('.search-field input').last().fill('sum');
  await p.waitForTimeout(900);
  await p.screenshot({ path: out + name + '-helpsearch.png' });
  if (await p.locator('.help-row.page').count()) {
    await p.locator('.help-row.page').first().click();
    await p.waitForTimeout(900);
    await p.screenshot({ path: out + name + '-page.png' });
  }
  await p.keyboard.press('Alt+Digit4');
  await p.waitForTimeout(500);
  await p.locator('.file-row', { hasText: 'tour.m' }).getByRole('button').first().click();
  await p.waitForTimeout(900);
  await p.screenshot({ path: out + name + '-editor.png' });
  await c.close();
}
await b.close();
s.close();
