// Reports of the examples, made by the program itself: SCENARIOMATCH names it, SCENARIOMATCH_EXAMPLES the examples.
// REPORT_SCREENSHOTS names a folder for pictures of them in both themes.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { addChecker, findings } from '../accessibility';
import { launch, openPage } from '../openPage';
import { colourNamed, pixelsLike } from '../pixels';

// What of an event's line the tests look at; all of it is compared.
interface Line {
  id: number;
  name: string;
  begin: string;
  end: string;
  duration: number;
  sub_events: unknown[];
}

interface Made {
  // Options for parameters and tracks.
  input: string[];
  lines: Line[];
  csv: string[];
  // What `run --stats` says.
  statistics: string;
  report: string;
}

interface WhyNot {
  summary: string[];
  apart?: string;
  components?: { missing?: WhyNot }[];
}

const program = process.env['SCENARIOMATCH'] as string;
const examples = process.env['SCENARIOMATCH_EXAMPLES'] as string;
const pictures = process.env['REPORT_SCREENSHOTS'];
const folder = mkdtempSync(join(tmpdir(), 'reports-'));
let browser: Browser;

before(async () => {
  if (pictures) {
    mkdirSync(pictures, { recursive: true });
  }
  browser = await launch();
});

after(async () => {
  await browser.close();
  rmSync(folder, { recursive: true, force: true });
});

function run(...words: string[]): { out: string; talk: string } {
  const { status, stdout, stderr } = spawnSync(program, words, { encoding: 'utf8' });
  assert.equal(status, 0, `${words.join(' ')}: ${stderr}`);
  return { out: stdout, talk: stderr };
}

function make(example: string, scene: string): Made {
  const place = (suffix: string): string => join(folder, `${scene}.${suffix}`);
  const input = ['--params', join(examples, example, `${example}.yaml`), '--tracks', place('jsonl')];
  run('synth', join(examples, example, 'scenes', `${scene}.yaml`), '--output', place('jsonl'));
  const { out, talk } = run('run', ...input, '--stats');
  const csv = run('run', ...input, '--events-format', 'csv').out;
  // The tracks of the lobby are in pixels.
  run('report', ...input, ...(example === 'lobby' ? ['--pixels'] : []), '--output', place('html'));
  const lines = out.trimEnd().split('\n');
  return {
    input,
    lines: lines.map(line => JSON.parse(line) as Line),
    csv: csv.trimEnd().split('\r\n'),
    statistics: talk,
    report: place('html'),
  };
}

// An event with sub-events, where there is one.
function mostTelling(lines: Line[]): Line {
  return lines.find(line => line.sub_events.length > 0) ?? (lines[0] as Line);
}

// What a button of the list saves.
async function saved(page: Page, name: 'CSV' | 'JSON'): Promise<string> {
  const [download] = await Promise.all([
    page.waitForEvent('download'),
    page.getByRole('button', { name, exact: true }).click(),
  ]);
  return readFileSync(await download.path(), 'utf8');
}

// The list stands in another order.
function byId(lines: Line[]): Line[] {
  return [...lines].sort((a, b) => a.id - b.id);
}

// What the page saves is what the program writes of the same events, to the last member.
async function compareExports(page: Page, lines: Line[], csv: string[]): Promise<void> {
  assert.deepEqual(byId(JSON.parse(await saved(page, 'JSON')) as Line[]), byId(lines));
  const [header, ...rows] = (await saved(page, 'CSV')).trimEnd().split('\r\n');
  assert.equal(header, csv[0]);
  const ids = new Set(lines.map(({ id }) => String(id)));
  const wanted = csv.slice(1).filter(row => ids.has(row.split(',')[0] as string));
  assert.deepEqual(rows.sort(), wanted.sort());
}

// The same with the list filtered to a model.
async function compareFiltered(page: Page, lines: Line[], csv: string[]): Promise<void> {
  const name = (lines[0] as Line).name;
  const those = lines.filter(line => line.name === name);
  assert.ok(those.length < lines.length);
  await page.getByRole('button', { name: 'Filter', exact: true }).click();
  await page.getByLabel('Model', { exact: true }).selectOption({ label: name });
  const wanted = `${those.length} of ${lines.length}`;
  await page.waitForFunction(words => document.querySelector('.count')?.textContent === words, wanted);
  await compareExports(page, those, csv);
  await page.getByRole('button', { name: 'Clear filters' }).click();
  await page.getByRole('button', { name: 'Filter', exact: true }).click();
}

const milliseconds = ({ begin, end }: Line): [number, number] => [
  Date.parse(`${begin}Z`),
  Date.parse(`${end}Z`),
];

// Counts, and what the program counted itself, are those of its outputs.
async function compareNumbers(page: Page, { lines, statistics }: Made): Promise<void> {
  await page.keyboard.press('3');
  await page.waitForSelector('.counts');
  const rowsOf = (table: string): Promise<string[][]> =>
    page
      .locator(`${table} tbody tr`)
      .evaluateAll(all => all.map(row => [...row.children].map(cell => cell.textContent ?? '')));
  const rows = await rowsOf('.counts');
  const recorded = await page.locator('.play-bar input').getAttribute('max');
  for (const [name, count, perMinute] of rows) {
    const those = lines.filter(line => line.name === name);
    assert.equal(Number(count), those.length, name);
    const rate = those.length / (Number(recorded) / 60_000);
    assert.ok(Math.abs(Number(perMinute) - rate) <= 0.005 + 1e-9, `${name}: ${perMinute}, not ${rate}`);
  }
  assert.equal(
    rows.reduce((sum, [, count]) => sum + Number(count), 0),
    lines.length,
  );
  const figures = await rowsOf('.run');
  assert.ok(figures.length > 5);
  for (const [name, number] of figures) {
    const count = String(number?.replaceAll(',', ''));
    const figure = name === 'most live instances' ? `at most ${count}\\)` : `^${name} +${count}\\b`;
    assert.match(statistics, new RegExp(figure, 'm'));
  }
  await page.keyboard.press('1');
}

// Points at the bar of an event: its lane is the one where the pointer is told of it.
async function pointAt(page: Page, line: Line, recorded: { start: number; end: number }): Promise<void> {
  const stage = await page.locator('.timeline .stage').boundingBox();
  assert.ok(stage);
  const [begin, end] = milliseconds(line);
  const gutter = Math.min(230, Math.max(160, stage.width * 0.175));
  const room = recorded.end * 0.03 + 1;
  const share = ((begin + end) / 2 - recorded.start + room) / (recorded.end + 2 * room);
  const x = stage.x + gutter + share * (stage.width - gutter - 8);
  for (let y = stage.y + 30; y < stage.y + stage.height; y += 7) {
    await page.mouse.move(x, y);
    const told = page.locator('.tooltip:not([hidden]) strong');
    if ((await told.count()) > 0 && (await told.innerText()) === `${line.name} #${line.id}`) {
      return;
    }
  }
  assert.fail(`no bar of ${line.name} ${line.id}`);
}

// Pixels of the timeline in the colour of arrows and of the rims of parts.
async function accentPixels(page: Page): Promise<number> {
  return (await pixelsLike(page, '.timeline canvas', await colourNamed(page, 'accent'))).count;
}

// A click on a bar selects its event, moves the time to it and draws arrows from its sub-events.
async function clickBar(page: Page, lines: Line[]): Promise<void> {
  const line = mostTelling(lines);
  const start = Date.parse(`${line.begin.slice(0, 11)}${await page.locator('.clock').innerText()}Z`);
  const end = Number(await page.locator('.play-bar input').getAttribute('max'));
  await pointAt(page, line, { start, end });
  const before = await accentPixels(page);
  await page.mouse.down();
  await page.mouse.up();
  await page.waitForFunction(
    wanted => document.querySelector('#selection strong')?.textContent === wanted,
    `${line.name} #${line.id}`,
  );
  assert.equal(await page.locator('.clock').innerText(), line.begin.slice(11));
  if (line.sub_events.length > 0) {
    assert.ok((await accentPixels(page)) > before + 100, `${before}, then ${await accentPixels(page)}`);
  }
  await page.keyboard.press('Escape');
  await page.keyboard.press('Home');
  await page.waitForFunction(() => document.querySelector('#selection')?.textContent === 'No event selected');
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
  assert.match(
    await page.locator('.why-model .lead').innerText(),
    new RegExp(`^${line.name} was recognised`),
  );
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
    const why = JSON.parse(run('explain', ...input, '--model', name, '--format', 'json').out) as WhyNot;
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
    const made = make(example, scene);
    const { lines } = made;
    assert.ok(lines.length > 0);
    for (const colorScheme of ['light', 'dark'] as const) {
      const { page, problems } = await openPage(browser, made.report, {
        colorScheme,
        bypassCSP: true,
        viewport: { width: 1280, height: 1400 },
      });
      assert.equal(await page.locator('.count').innerText(), `${lines.length.toLocaleString('en')} events`);
      await compareNumbers(page, made);
      await compareExports(page, lines, made.csv);
      await compareFiltered(page, lines, made.csv);
      if (colorScheme === 'light') {
        await compareReasons(page, made.input);
      }
      await clickBar(page, lines);
      await addChecker(page);
      await explore(page, mostTelling(lines));
      assert.deepEqual(await findings(page), []);
      await page.setViewportSize({ width: 1280, height: 800 });
      const picture = await page.screenshot(
        pictures ? { path: join(pictures, `${example}-${scene}-${colorScheme}.png`) } : {},
      );
      assert.ok(picture.length > 20_000);
      await page.close();
      assert.deepEqual(problems, []);
    }
  });
}
