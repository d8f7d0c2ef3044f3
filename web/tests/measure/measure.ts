// Measures the page with 50,000 events and two hours of 20 actors: how long until it is drawn, and how long a frame takes
// while it is moved. Exit status 1 when it is slower than it may be.
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium, type Page } from 'playwright-core';
import { fill } from '../fill';
import { hall } from '../fixture';
import { launchOptions } from '../launch';

const kLimits = { shown: 2000, frame: 100 };
const kFrames = 60;

interface Measured {
  name: string;
  milliseconds: number;
  limit: number;
}

async function frames(page: Page, name: string, act: string): Promise<Measured> {
  const milliseconds = await page.evaluate(
    async ({ key, count }) => {
      const stage = document.querySelector<HTMLElement>('.timeline .stage');
      const plan = document.querySelector<HTMLElement>('.plan .stage');
      const rows = document.querySelector<HTMLElement>('.grid');
      if (!stage || !plan || !rows) {
        throw new Error('there is nothing to move');
      }
      const wheel = (target: HTMLElement, options: WheelEventInit): unknown =>
        target.dispatchEvent(
          new WheelEvent('wheel', {
            bubbles: true,
            cancelable: true,
            clientX: 800,
            clientY: 650,
            ...options,
          }),
        );
      const acts: Record<string, (i: number) => unknown> = {
        pan: i => wheel(stage, { deltaX: i % 20 < 10 ? 40 : -40 }),
        zoom: i => wheel(stage, { deltaY: i % 20 < 10 ? -60 : 60 }),
        plan: i => wheel(plan, { deltaY: i % 20 < 10 ? -60 : 60 }),
        scroll: i => rows.scrollTo(0, i * 20_000),
      };
      const frame = (): Promise<number> => new Promise(resolve => requestAnimationFrame(resolve));
      let longest = 0;
      await frame();
      for (let i = 0; i < count; i += 1) {
        const begin = performance.now();
        acts[key]?.(i);
        await frame();
        await frame();
        longest = Math.max(longest, (performance.now() - begin) / 2);
      }
      return longest;
    },
    { key: act, count: kFrames },
  );
  return { name, milliseconds, limit: kLimits.frame };
}

async function measure(file: string): Promise<Measured[]> {
  const browser = await chromium.launch(launchOptions());
  try {
    const page = await browser.newPage({ viewport: { width: 1920, height: 1080 } });
    await page.goto(`file://${file}`);
    await page.waitForSelector('.page');
    const shown = await page.evaluate(
      () =>
        new Promise<number>(resolve =>
          requestAnimationFrame(() => requestAnimationFrame(() => resolve(performance.now()))),
        ),
    );
    return [
      { name: 'from opening the file until it is drawn', milliseconds: shown, limit: kLimits.shown },
      await frames(page, 'longest frame, moving the timeline', 'pan'),
      await frames(page, 'longest frame, zooming the timeline', 'zoom'),
      await frames(page, 'longest frame, zooming the plan', 'plan'),
      await frames(page, 'longest frame, scrolling the list', 'scroll'),
    ];
  } finally {
    await browser.close();
  }
}

const folder = mkdtempSync(join(tmpdir(), 'report-measure-'));
try {
  const file = join(folder, 'big.html');
  const template = readFileSync(process.env['REPORT_TEMPLATE'] as string, 'utf8');
  writeFileSync(file, fill(template, { ...hall({ actors: 20, events: 50_000, milliseconds: 7_200_000 }) }));
  for (const { name, milliseconds, limit } of await measure(file)) {
    const verdict = milliseconds <= limit ? '' : '  too slow';
    process.stdout.write(
      `${name.padEnd(42)}${milliseconds.toFixed(0).padStart(6)} ms of ${limit} ms${verdict}\n`,
    );
    if (milliseconds > limit) {
      process.exitCode = 1;
    }
  }
} finally {
  rmSync(folder, { recursive: true, force: true });
}
