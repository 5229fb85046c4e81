import type { Page } from 'playwright-core';

/// Two fingers that move apart by the factor, around a point.
export async function pinch(page: Page, x: number, y: number, factor: number): Promise<void> {
  const client = await page.context().newCDPSession(page);
  const touch = (type: 'touchStart' | 'touchMove' | 'touchEnd', spread: number) =>
    client.send('Input.dispatchTouchEvent', {
      type,
      touchPoints:
        type === 'touchEnd'
          ? []
          : [
              { x: x - spread, y: y - spread, id: 1 },
              { x: x + spread, y: y + spread, id: 2 },
            ],
    });
  await touch('touchStart', 40);
  for (let k = 1; k <= 8; k++) await touch('touchMove', 40 * (1 + ((factor - 1) * k) / 8));
  await touch('touchEnd', 0);
}
