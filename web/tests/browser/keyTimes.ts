/// What one key costs, by traces of the browser: the time from the event to the frame that shows its
/// letter, and the processor time of the page's thread up to there.

import type { Browser, Page } from 'playwright-core';

interface TraceEvent {
  name: string;
  ph: string;
  pid: number;
  tid: number;
  id?: string;
  id2?: { local?: string; global?: string };
  ts: number;
  dur?: number;
  tdur?: number;
  args: { data?: { type?: string } };
}

async function traced(browser: Browser, categories: string[], work: () => Promise<void>): Promise<TraceEvent[]> {
  const client = await browser.newBrowserCDPSession();
  const events: TraceEvent[] = [];
  client.on('Tracing.dataCollected', ({ value }) => events.push(...(value as unknown as TraceEvent[])));
  const traceConfig = { includedCategories: categories };
  await client.send('Tracing.start', { traceConfig, transferMode: 'ReportEvents' });
  await work();
  const complete = new Promise((resolve) => client.once('Tracing.tracingComplete', resolve));
  await client.send('Tracing.end');
  await complete;
  await client.detach();
  return events.sort((a, b) => a.ts - b.ts);
}

/// Keys come at odd moments of the screen's clock.
async function press(page: Page, keys: number): Promise<void> {
  for (let k = 0; k < keys; k++) {
    await page.keyboard.press('a');
    await page.waitForTimeout(200 + ((7 * k) % 17));
  }
}

/// Milliseconds from each key's event, as it reached the browser, to the frame with what it led to.
export async function keyToScreen(browser: Browser, page: Page, keys: number): Promise<number[]> {
  const began = new Map<string, number>();
  const times: number[] = [];
  for (const event of await traced(browser, ['latencyInfo'], () => press(page, keys))) {
    if (event.name !== 'InputLatency::KeyDown') continue;
    const id = event.id ?? event.id2?.local ?? event.id2?.global ?? '';
    if (event.ph === 'b') began.set(id, event.ts);
    else if (began.has(id)) times.push((event.ts - began.get(id)!) / 1000);
  }
  return times;
}

/// Milliseconds of processor time of the page's thread from each key to the commit of its frame.
export async function processorTime(browser: Browser, page: Page, keys: number): Promise<number[]> {
  const categories = ['devtools.timeline', 'disabled-by-default-devtools.timeline', 'toplevel'];
  const events = await traced(browser, categories, () => press(page, keys));
  const downs = events.filter(({ name, args }) => name === 'EventDispatch' && args.data?.type === 'keydown');
  const mine = events.filter(({ pid, tid }) => pid === downs[0]?.pid && tid === downs[0]?.tid);
  const tasks = mine.filter(({ name }) => name === 'ThreadControllerImpl::RunTask');
  return downs.flatMap(({ ts }) => {
    const commit = mine.find((event) => event.name === 'Commit' && event.ts > ts);
    if (!commit) return [];
    const busy = tasks.filter((task) => task.ts + task.dur! > ts && task.ts < commit.ts);
    return [busy.reduce((sum, { tdur }) => sum + tdur!, 0) / 1000];
  });
}
