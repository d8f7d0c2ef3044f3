// Reports of the examples, made by the program itself: SCENARIOMATCH names it, SCENARIOMATCH_EXAMPLES the examples.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { addChecker, findings } from '../accessibility';
import { launch, openPage } from '../openPage';

interface Line {
  id: number;
  name: string;
  begin: string;
  end: string;
  begin_frame: number;
  end_frame: number;
  duration: number;
  confidence: number;
  alarm_level: string;
  text: string;
  objects: { variable: string; id: number; name: string }[];
  sub_events: { variable: string; id: number; name: string }[];
}

interface Made {
  // Options for parameters and tracks.
  input: string[];
  lines: Line[];
  report: string;
}

interface WhyNot {
  summary: string[];
  apart?: string;
  components?: { missing?: WhyNot }[];
}

const program = process.env['SCENARIOMATCH'] as string;
const examples = process.env['SCENARIOMATCH_EXAMPLES'] as string;
const folder = mkdtempSync(join(tmpdir(), 'reports-'));
let browser: Browser;

before(async () => {
  browser = await launch();
});

after(async () => {
  await browser.close();
  rmSync(folder, { recursive: true, force: true });
});

function run(...words: string[]): string {
  const { status, stdout, stderr } = spawnSync(program, words, { encoding: 'utf8' });
  assert.equal(status, 0, `${words.join(' ')}: ${stderr}`);
  return stdout;
}

function make(example: string, scene: string): Made {
  const place = (suffix: string): string => join(folder, `${scene}.${suffix}`);
  const input = ['--params', join(examples, example, `${example}.yaml`), '--tracks', place('jsonl')];
  run('synth', join(examples, example, 'scenes', `${scene}.yaml`), '--output', place('jsonl'));
  run('run', ...input, '--events', place('events'));
  run('report', ...input, '--output', place('html'));
  const lines = readFileSync(place('events'), 'utf8').trimEnd().split('\n');
  return { input, lines: lines.map(line => JSON.parse(line) as Line), report: place('html') };
}

// What must be the same in the program's output and in the page's export; the order of variables is not.
function comparable(line: Line): unknown {
  const { id, name, begin, end, begin_frame, end_frame, duration, confidence, alarm_level, text } = line;
  const objects = line.objects.map(one => `${one.variable}=${one.id} ${one.name}`).sort();
  const parts = line.sub_events.map(one => `${one.variable}=${one.id} ${one.name}`).sort();
  return {
    id,
    name,
    begin,
    end,
    begin_frame,
    end_frame,
    duration,
    confidence,
    alarm_level,
    text,
    objects,
    parts,
  };
}

async function exported(page: Page): Promise<Line[]> {
  const [download] = await Promise.all([
    page.waitForEvent('download'),
    page.getByRole('button', { name: 'JSON', exact: true }).click(),
  ]);
  return JSON.parse(readFileSync(await download.path(), 'utf8')) as Line[];
}

async function counts(page: Page): Promise<Map<string, number>> {
  await page.keyboard.press('3');
  await page.waitForSelector('.counts');
  const rows = await page
    .locator('.counts tbody tr')
    .evaluateAll(all =>
      all.map(row => [row.children[0]?.textContent ?? '', Number(row.children[1]?.textContent)] as const),
    );
  await page.keyboard.press('1');
  return new Map(rows.filter(([, count]) => count > 0));
}

function countsOf(lines: Line[]): Map<string, number> {
  const result = new Map<string, number>();
  for (const { name } of lines) {
    result.set(name, (result.get(name) ?? 0) + 1);
  }
  return result;
}

async function explore(page: Page, line: Line): Promise<void> {
  await page.locator('.clock').click();
  await page.keyboard.press(' ');
  await page.waitForFunction(() => !document.querySelector('.clock')?.textContent?.endsWith('00.000'));
  await page.keyboard.press(' ');
  await page.keyboard.press('/');
  await page.keyboard.type(`#${line.id}`);
  const row = page.locator('.rows .row', { hasText: line.name }).first();
  await page.waitForFunction(() => document.querySelector('.count')?.textContent?.includes(' of '));
  await row.click();
  await page.waitForFunction(
    wanted => document.querySelector('#selection strong')?.textContent === wanted,
    `${line.name} #${line.id}`,
  );
  assert.equal(await page.locator('.clock').innerText(), line.begin.slice(11));
  await page.keyboard.press('2');
  await page.waitForSelector('.why-event .facts');
  assert.match(
    await page.locator('.why-event').innerText(),
    new RegExp(`${line.name} \\(event ${line.id}\\) was recognised`),
  );
  assert.match(await page.locator('.why-model').innerText(), /candidates were tried|\d events?\./);
}

// Why components were never together takes more than the page holds.
function withoutApart(words: string, { apart, components }: WhyNot): string {
  const shorter = apart ? words.replace(`: ${apart}`, '') : words;
  return (components ?? []).reduce(
    (rest, { missing }) => (missing ? withoutApart(rest, missing) : rest),
    shorter,
  );
}

// Of every model, what the page says of all the time is what explain says.
async function compareReasons(page: Page, input: string[]): Promise<void> {
  await page.keyboard.press('2');
  const models = page.getByLabel('Model that did not match');
  for (const name of await models.locator('option').allInnerTexts()) {
    await models.selectOption({ label: name });
    const why = JSON.parse(run('explain', ...input, '--model', name, '--format', 'json')) as WhyNot;
    await page.waitForFunction(
      model => document.querySelector('.why-model .lead')?.textContent?.startsWith(model),
      name,
    );
    assert.equal(
      await page.locator('.why-model .lead').innerText(),
      withoutApart(why.summary.join(' '), why),
      `${name} of ${input.join(' ')}`,
    );
  }
  await page.keyboard.press('1');
}

for (const [example, scene] of [
  ['lobby', 'bag'],
  ['lobby', 'meeting'],
  ['gate', 'flow'],
] as const) {
  test(`the report of ${example}, ${scene}, says what run says`, async () => {
    const { input, lines, report } = make(example, scene);
    assert.ok(lines.length > 0);
    for (const colorScheme of ['light', 'dark'] as const) {
      const { page, problems } = await openPage(browser, report, { colorScheme, bypassCSP: true });
      assert.equal(await page.locator('.count').innerText(), `${lines.length.toLocaleString('en')} events`);
      assert.deepEqual(await counts(page), countsOf(lines));
      const order = (all: Line[]): unknown[] => [...all].sort((a, b) => a.id - b.id).map(comparable);
      assert.deepEqual(order(await exported(page)), order(lines));
      if (colorScheme === 'light') {
        await compareReasons(page, input);
      }
      await addChecker(page);
      await explore(page, lines.find(line => line.sub_events.length > 0) ?? (lines[0] as Line));
      assert.deepEqual(await findings(page), []);
      const picture = await page.screenshot();
      assert.ok(picture.length > 20_000);
      await page.close();
      assert.deepEqual(problems, []);
    }
  });
}
