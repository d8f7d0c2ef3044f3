// Takes the pictures of the documents: node tests/run.mjs pictures BAG GATE FOLDER, where BAG is a report of the lobby's bag
// and GATE one of the gate's flow.
import { join } from 'node:path';
import type { Page } from 'playwright-core';
import { launch, openPage } from '../openPage';

const [bag, gate, folder] = process.argv.slice(2);
if (!bag || !gate || !folder) {
  throw new Error('name two reports and the folder for the pictures');
}
const browser = await launch();

async function take(page: Page, name: string): Promise<void> {
  await page.waitForTimeout(200);
  await page.screenshot({ path: join(folder as string, `${name}.png`) });
}

for (const colorScheme of ['light', 'dark'] as const) {
  const { page } = await openPage(browser, bag, { colorScheme });
  await page.locator('.rows .row', { hasText: 'BagLeft' }).first().click();
  await page.keyboard.press('2');
  await page.waitForSelector('.why-event .findings');
  for (let i = 0; i < 6; i += 1) {
    await page.keyboard.press('ArrowRight');
  }
  await take(page, `report-${colorScheme}`);
  await page.close();
}

const { page } = await openPage(browser, gate);
await page.keyboard.press('3');
for (let i = 0; i < 12; i += 1) {
  await page.keyboard.press('ArrowRight');
}
await take(page, 'report-numbers');
await browser.close();
