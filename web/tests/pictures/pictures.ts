// Takes the pictures of the documents: node tests/run.mjs pictures REPORT FOLDER
import { join } from 'node:path';
import { launch, openPage } from '../openPage';

const [report, folder] = process.argv.slice(2);
if (!report || !folder) {
  throw new Error('name a report and the folder for the pictures');
}
const browser = await launch();
for (const colorScheme of ['light', 'dark'] as const) {
  const { page } = await openPage(browser, report, { colorScheme });
  await page.locator('.rows .row', { hasText: 'BagLeft' }).first().click();
  await page.keyboard.press('2');
  await page.waitForSelector('.why-event .findings');
  for (let i = 0; i < 6; i += 1) {
    await page.keyboard.press('ArrowRight');
  }
  await page.waitForTimeout(200);
  await page.screenshot({ path: join(folder, `report-${colorScheme}.png`) });
  await page.keyboard.press('3');
  await page.waitForTimeout(200);
  if (colorScheme === 'light') {
    await page.screenshot({ path: join(folder, 'report-numbers.png') });
  }
  await page.close();
}
await browser.close();
