// Measures the page with 50,000 events and two hours of 20 actors: how long until it is drawn, and how long a frame takes
// while it is moved. Exit status 1 when it is slower than it may be.
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium, type Browser, type Page } from 'playwright-core';
import { fill } from '../fill';
import { hall } from '../fixture';
import { launchOptions } from '../launch';

const kLimits = { shown: 2000, frame: 100 };
const kFrames = 60;
const kRounds = 3;
// Two thirds of a second of a noisy tracker are a straight line.
const kSize = { actors: 20, events: 50_000, milliseconds: 7_200_000, step: 700, explained: 50_000 };

interface Measured {
  name: string;
  milliseconds: number;
  limit: number;
}

// Something is moved in every frame. The longest time from one frame to the next counts, of the best of some rounds: what
// else the machine does adds to it and takes nothing away.
async function frames(page: Page, name: string, act: string): Promise<Measured> {
  const milliseconds = await page.evaluate(
    async ({ key, count, rounds }) => {
      const stage = document.querySelector<HTMLElement>('.timeline .stage');
      const plan = document.querySelector<HTMLElement>('.plan .stage');
      const rows = document.querySelector<HTMLElement>('.grid');
      if (!stage || !plan || !rows) {
        throw new Error('there is nothing to move');
      }
      const common = { bubbles: true, cancelable: true };
      const wheel = (target: HTMLElement, options: WheelEventInit): unknown =>
        target.dispatchEvent(new WheelEvent('wheel', { ...common, clientX: 800, clientY: 650, ...options }));
      const press = (target: HTMLElement, name: string): unknown =>
        target.dispatchEvent(new KeyboardEvent('keydown', { ...common, key: name }));
      const isOut = (i: number): boolean => i % 20 < 10;
      const acts: Record<string, (i: number) => unknown> = {
        pan: i => wheel(stage, { deltaX: isOut(i) ? 40 : -40 }),
        zoom: i => wheel(stage, { deltaY: isOut(i) ? -60 : 60 }),
        planPan: i => press(plan, isOut(i) ? 'ArrowLeft' : 'ArrowRight'),
        planZoom: i => wheel(plan, { deltaY: isOut(i) ? -60 : 60 }),
        scroll: i => rows.scrollTo(0, i * 20_000),
        nothing: () => undefined,
      };
      const frame = (): Promise<number> => new Promise(resolve => requestAnimationFrame(resolve));
      let best = Infinity;
      for (let round = 0; round < rounds; round += 1) {
        let longest = 0;
        let last = await frame();
        for (let i = 0; i < count; i += 1) {
          acts[key]?.(i);
          const now = await frame();
          longest = Math.max(longest, now - last);
          last = now;
        }
        best = Math.min(best, longest);
      }
      return best;
    },
    { key: act, count: kFrames, rounds: kRounds },
  );
  return { name: `longest frame, ${name}`, milliseconds, limit: kLimits.frame };
}

async function opened(browser: Browser, file: string): Promise<{ page: Page; shown: number }> {
  const page = await browser.newPage({ viewport: { width: 1920, height: 1080 } });
  await page.goto(`file://${file}`);
  await page.waitForSelector('.page');
  const shown = await page.evaluate(
    () =>
      new Promise<number>(resolve =>
        requestAnimationFrame(() => requestAnimationFrame(() => resolve(performance.now()))),
      ),
  );
  return { page, shown };
}

// With arrows from its parts.
async function selectComposite(page: Page): Promise<void> {
  await page.keyboard.press('/');
  await page.keyboard.type('LongVisit');
  await page.waitForFunction(() => document.querySelector('.count')?.textContent?.includes(' of '));
  await page.locator('.rows .row').first().click();
  await page.waitForFunction(() =>
    document.querySelector('#selection')?.textContent?.startsWith('LongVisit'),
  );
}

async function measure(file: string): Promise<Measured[]> {
  const browser = await chromium.launch(launchOptions());
  try {
    const first = await opened(browser, file);
    const times = [first.shown];
    await first.page.close();
    const { page, shown } = await opened(browser, file);
    times.push(shown);
    const measured = [
      {
        name: 'from opening the file until it is drawn',
        milliseconds: Math.min(...times),
        limit: kLimits.shown,
      },
      await frames(page, 'moving the timeline', 'pan'),
      await frames(page, 'zooming the timeline', 'zoom'),
      await frames(page, 'moving the plan', 'planPan'),
      await frames(page, 'zooming the plan', 'planZoom'),
      await frames(page, 'scrolling the list', 'scroll'),
    ];
    await selectComposite(page);
    measured.push(await frames(page, 'moving the timeline, an event selected', 'pan'));
    await page.keyboard.press('2');
    await page.waitForSelector('.why-model .lead', { timeout: 60_000 });
    measured.push(await frames(page, 'the same with its reasons', 'pan'));
    await page.keyboard.press(' ');
    measured.push(await frames(page, 'playing', 'nothing'));
    return measured;
  } finally {
    await browser.close();
  }
}

const folder = mkdtempSync(join(tmpdir(), 'report-measure-'));
try {
  const file = join(folder, 'big.html');
  const template = readFileSync(process.env['REPORT_TEMPLATE'] as string, 'utf8');
  const page = fill(template, { ...hall(kSize) });
  writeFileSync(file, page);
  process.stdout.write(`a page of ${(page.length / 1e6).toFixed(1)} MB\n`);
  for (const { name, milliseconds, limit } of await measure(file)) {
    const verdict = milliseconds <= limit ? '' : '  too slow';
    process.stdout.write(
      `${name.padEnd(56)}${milliseconds.toFixed(0).padStart(6)} ms of ${limit} ms${verdict}\n`,
    );
    if (milliseconds > limit) {
      process.exitCode = 1;
    }
  }
} finally {
  rmSync(folder, { recursive: true, force: true });
}
