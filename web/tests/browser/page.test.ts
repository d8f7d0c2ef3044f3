import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { addChecker, findings } from '../accessibility';
import { carrier, fill, kDataPlace, packed } from '../fill';
import { hall, type Fixture } from '../fixture';
import { launch, openPage, type Opened } from '../openPage';
import { pictureOf, pixelsLike } from '../pixels';

const kTemplate = process.env['REPORT_TEMPLATE'] as string;
const kMostBytes = 400_000;
const template = readFileSync(kTemplate, 'utf8');
const folder = mkdtempSync(join(tmpdir(), 'report-page-'));
let browser: Browser;
let count = 0;

before(async () => {
  browser = await launch();
});

after(async () => {
  await browser.close();
  rmSync(folder, { recursive: true, force: true });
});

type Options = Parameters<typeof openPage>[2];

async function open(html: string, options: Options = {}): Promise<Opened> {
  count += 1;
  const file = join(folder, `${count}.html`);
  writeFileSync(file, html);
  return openPage(browser, file, options);
}

function small(): Fixture {
  return hall({ actors: 8, events: 120, milliseconds: 180_000 });
}

async function closed({ page, problems }: Opened): Promise<void> {
  await page.close();
  assert.deepEqual(problems, []);
}

const text = (page: Page, selector: string): Promise<string> => page.locator(selector).first().innerText();

test('the page without data is small and refers to nothing outside', () => {
  assert.ok(statSync(kTemplate).size <= kMostBytes, `${statSync(kTemplate).size} bytes`);
  assert.equal(template.split(kDataPlace).length, 2);
  assert.doesNotMatch(template, /<(script|link|img)[^>]+(src|href)=/);
  assert.match(template, /Content-Security-Policy/);
});

test('a page without data says so', async () => {
  const opened = await open(template);
  assert.match(await text(opened.page, '.failure'), /carries no report-data/);
  await closed(opened);
});

test('data that is cut off, changed or of another version is refused with a reason', async () => {
  const whole = packed(small().data);
  const refused: [string, RegExp][] = [
    [carrier('report-data', whole.slice(0, whole.length >> 1)), /cannot be unpacked|no Base64/],
    [carrier('report-data', 'not base64 !'), /no Base64/],
    [carrier('report-data', packed({ version: 9 })), /version 9/],
    [carrier('report-data', packed('text')), /the report is no object/],
    [carrier('report-data', ''), /cannot be unpacked/],
  ];
  for (const [part, reason] of refused) {
    const opened = await open(template.replace(kDataPlace, () => part));
    assert.match(await text(opened.page, '.failure'), reason);
    await closed(opened);
  }
});

test('without tracks the events are shown all the same', async () => {
  const { data, why } = small();
  const opened = await open(fill(template, { data, why }));
  assert.match(await text(opened.page, '.problem'), /tracks cannot be shown/);
  assert.equal(await text(opened.page, '.count'), '120 events');
  await closed(opened);
});

test('without explanations the reasons say that there are none', async () => {
  const { data, tracks } = small();
  const opened = await open(fill(template, { data, tracks }));
  await opened.page.locator('.rows .row').first().click();
  await opened.page.keyboard.press('2');
  await opened.page.waitForSelector('.why-event .problem');
  assert.match(await text(opened.page, '.why-event .problem'), /No explanations/);
  await closed(opened);
});

test('it plays, steps and changes speed by keys', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  assert.equal(await text(page, '.clock'), '10:15:00.000');
  await page.keyboard.press('.');
  await page.waitForFunction(() => document.querySelector('.clock')?.textContent === '10:15:00.040');
  await page.keyboard.press('ArrowRight');
  await page.waitForFunction(() => document.querySelector('.clock')?.textContent === '10:15:01.040');
  await page.keyboard.press(']');
  await page.keyboard.press(' ');
  await page.waitForFunction(() => (document.querySelector('.clock')?.textContent ?? '') > '10:15:01.300');
  await page.keyboard.press(' ');
  await page.waitForSelector('[aria-label="Play (space)"]');
  assert.equal(await page.locator('select[aria-label="Speed"]').inputValue(), '2');
  await page.keyboard.press('End');
  await page.waitForFunction(() => document.querySelector('.clock')?.textContent === '10:18:00.000');
  await closed(opened);
});

test('an event is selected in the timeline by a click, and by keys', async () => {
  const { data, tracks, why } = small();
  // One model, one event: its bar fills a known part of the first lane.
  const event = data.events.model.indexOf(4);
  data.models = data.models.map((model, i) => (i === 4 ? { ...model, components: [] } : model));
  const only = (values: unknown[]): unknown[] => [values[event]];
  const columns = Object.fromEntries(
    Object.entries(data.events).map(([name, values]) => [name, only(values as unknown[])]),
  );
  const events = { ...columns, begin: [60_000], end: [120_000], subEvents: [[]] };
  const opened = await open(
    fill(template, { data: { ...data, events }, tracks, why: { ...why, events: only(why.events) } }),
  );
  const { page } = opened;
  const stage = await page.locator('.timeline .stage').boundingBox();
  assert.ok(stage);
  // Below the axis, a group with a line for two models without events, and the head of the second group.
  const y = stage.y + 26 + 24 + 21 + 24 + 10;
  await page.mouse.move(stage.x + stage.width * 0.6, y);
  await page.waitForSelector('.tooltip:not([hidden])');
  assert.match(await text(page, '.tooltip'), /LongVisit #/);
  await page.mouse.click(stage.x + stage.width * 0.6, y);
  await page.waitForFunction(() =>
    document.querySelector('#selection')?.textContent?.startsWith('LongVisit'),
  );
  assert.equal(await text(page, '.clock'), '10:16:00.000');
  await page.keyboard.press('Escape');
  await page.waitForFunction(() => document.querySelector('#selection')?.textContent === 'No event selected');
  await page.keyboard.press('n');
  await page.waitForFunction(() =>
    document.querySelector('#selection')?.textContent?.startsWith('LongVisit'),
  );
  await closed(opened);
});

test('filters limit the list and the exports', async () => {
  const fixture = small();
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  const visits = fixture.data.events.model.filter(model => model === 4).length;
  await page.getByRole('button', { name: 'Filter' }).click();
  await page.getByLabel('Model', { exact: true }).selectOption({ label: 'LongVisit' });
  await page.waitForFunction(
    wanted => document.querySelector('.count')?.textContent === wanted,
    `${visits} of 120`,
  );
  for (const [name, check] of [
    ['CSV', (words: string) => words.trimEnd().split('\r\n').length - 1],
    ['JSON', (words: string) => (JSON.parse(words) as unknown[]).length],
  ] as const) {
    const [download] = await Promise.all([
      page.waitForEvent('download'),
      page.getByRole('button', { name, exact: true }).click(),
    ]);
    assert.equal(check(readFileSync(await download.path(), 'utf8')), visits);
    assert.equal(download.suggestedFilename(), `hall-events.${name.toLowerCase()}`);
  }
  await closed(opened);
});

test('a confidence that is no number is a dash, wherever it stands', async () => {
  const fixture = small();
  fixture.data.events.confidence.fill(null);
  fixture.why.events.forEach(evidence => {
    if (evidence) {
      evidence.confidence = null;
    }
  });
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  assert.equal(await text(page, '.rows .cell.confidence'), '–');
  await page.locator('.rows .row').first().click();
  await page.keyboard.press('2');
  await page.waitForSelector('.why-event .findings');
  assert.match(await text(page, '.why-event .evidence .facts'), /confidence – \(needed 0\.3\)/);
  await closed(opened);
});

test('Home and End lead to the ends of the list, with an event selected or without', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  const isRow = (row: string): Promise<unknown> => page.waitForSelector(`#row-${row}[aria-selected=true]`);
  await page.locator('.grid').focus();
  await page.keyboard.press('End');
  await isRow('119');
  await page.keyboard.press('Home');
  await isRow('0');
  await page.keyboard.press('End');
  await isRow('119');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Home');
  await isRow('0');
  await closed(opened);
});

test('clearing the filters keeps the focus where it was', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  await page.getByRole('button', { name: 'Filter' }).click();
  await page.getByLabel('Kind', { exact: true }).selectOption({ label: 'CompositeState' });
  await page.getByRole('button', { name: 'Clear filters' }).focus();
  await page.keyboard.press('Enter');
  await page.waitForFunction(() => document.querySelector('.count')?.textContent === '120 events');
  assert.equal(await page.evaluate(() => document.activeElement?.textContent), 'Clear filters');
  assert.equal(await page.getByLabel('Kind', { exact: true }).inputValue(), '-1');
  await closed(opened);
});

test('a sort that is chosen again turns round', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  const header = page.locator('[role=columnheader].duration');
  await header.getByRole('button').click();
  assert.equal(await header.getAttribute('aria-sort'), 'ascending');
  await header.getByRole('button').click();
  assert.equal(await header.getAttribute('aria-sort'), 'descending');
  await closed(opened);
});

test('the list is sorted by what has no column as well, and events without alarm are chosen', async () => {
  const fixture = small();
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.getByRole('button', { name: 'Filter' }).click();
  await page.getByLabel('Sort by', { exact: true }).selectOption({ label: 'Zone or thing' });
  await page.getByLabel('Direction', { exact: true }).selectOption({ label: 'Falling' });
  assert.match(await text(page, '.rows .cell.objects'), /z=Waiting area/);
  await page.getByLabel('Sort by', { exact: true }).selectOption({ label: 'Alarm' });
  assert.equal(await page.locator('[role=columnheader].alarm').getAttribute('aria-sort'), 'descending');
  await page.locator('[role=columnheader].duration').getByRole('button').click();
  assert.equal(await page.getByLabel('Sort by', { exact: true }).inputValue(), 'duration');
  assert.equal(await page.getByLabel('Direction', { exact: true }).inputValue(), 'false');
  await page.getByLabel('Alarm', { exact: true }).selectOption({ label: 'No alarm' });
  const without = fixture.data.events.alarm.filter(alarm => alarm < 0).length;
  assert.ok(without > 0);
  await page.waitForFunction(
    wanted => document.querySelector('.count')?.textContent === wanted,
    `${without} of 120`,
  );
  await closed(opened);
});

test('why shows constraints and parts, and moves to a part', async () => {
  const fixture = small();
  const composite = fixture.data.events.subEvents.findIndex(parts => parts.some(part => part >= 0));
  const part = fixture.data.events.subEvents[composite]?.find(one => one >= 0) as number;
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.keyboard.press('/');
  await page.keyboard.type(`#${fixture.data.events.id[composite]}`);
  await page.keyboard.press('Tab');
  await page.waitForFunction(() => document.querySelector('.count')?.textContent?.includes('of'));
  await page
    .locator('.rows .row', {
      hasText: fixture.data.models[fixture.data.events.model[composite] as number]?.name ?? '',
    })
    .first()
    .click();
  await page.keyboard.press('2');
  await page.waitForSelector('.why-event .findings');
  assert.match(await text(page, '.why-event'), /First recognised at/);
  assert.match(await text(page, '.why-model .lead'), /was recognised from 0 s to 180 s, \d+ events?\./);
  await page.locator('.part .link').first().click();
  await page.waitForFunction(
    wanted => document.querySelector('#selection strong')?.textContent?.endsWith(wanted),
    `#${fixture.data.events.id[part]}`,
  );
  await closed(opened);
});

test('why not says of a composite which component lacked, and what became of that one', async () => {
  const fixture = small();
  const { events } = fixture.data;
  events.model = events.model.map(model => (model === 4 ? 3 : model));
  events.subEvents = events.model.map(() => []);
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.keyboard.press('2');
  const models = page.getByLabel('Model that did not match');
  await models.selectOption({ label: 'NeverSeen' });
  await page.waitForSelector('.why-model .part');
  const lead = await text(page, '.why-model .lead');
  assert.match(lead, /^NeverSeen was not recognised from 0 s to 180 s\. 19140 candidates were tried\./);
  assert.match(lead, /NeverSeen needs c1 \(LongVisit\), which was never recognised\./);
  assert.deepEqual(await page.locator('.why-model > .components tbody tr').allInnerTexts(), [
    'c1\tLongVisit\t0',
  ]);
  const part = page.locator('.why-model .part');
  assert.equal(await part.locator('summary').innerText(), 'c1 LongVisit 19,140 candidates');
  assert.deepEqual(
    await part.locator('.components tbody tr').allInnerTexts(),
    ['InZone', 'Waits'].map(
      (name, i) => `c${i + 1}\t${name}\t${events.model.filter(model => model === i).length}`,
    ),
  );
  const row = part.locator('.findings tbody tr').first();
  assert.match(await row.innerText(), /c1 before c2\s+1,200\s+3\.2\s+missed by 1\.8 s\s+p=1 at 0 s\s+>= 5/);
  await page.keyboard.press('End');
  await row.getByRole('button').click();
  await page.waitForFunction(() => document.querySelector('.clock')?.textContent === '10:15:00.000');
  await closed(opened);
});

test('numbers count what the data has', async () => {
  const fixture = small();
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.keyboard.press('3');
  await page.waitForSelector('.counts');
  const shown = await page
    .locator('.counts tbody tr')
    .evaluateAll(rows =>
      rows.map(row => [row.children[0]?.textContent, Number(row.children[1]?.textContent)] as const),
    );
  const expected = fixture.data.models.map((model, i) => [
    model.name,
    fixture.data.events.model.filter(one => one === i).length,
  ]);
  assert.deepEqual(shown, expected);
  assert.equal(await page.locator('.numbers .uplot').count(), 3);
  assert.match(await text(page, '.run'), /candidates tested\s+1,234,567/);
  await closed(opened);
});

const kPlan = '.plan canvas';
const kTimeline = '.timeline canvas';

async function drag(page: Page, selector: string, dx: number, dy: number): Promise<void> {
  const box = await page.locator(selector).boundingBox();
  assert.ok(box);
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 2 + dx, box.y + box.height / 2 + dy, { steps: 4 });
  await page.mouse.up();
  // Away, so that nothing hovers.
  await page.mouse.move(1, 1);
}

async function wheel(page: Page, selector: string, by: number): Promise<void> {
  const box = await page.locator(selector).boundingBox();
  assert.ok(box);
  await page.mouse.move(box.x + box.width * 0.6, box.y + box.height / 2);
  await page.mouse.wheel(0, by);
  await page.mouse.move(1, 1);
}

test('plan and timeline are dragged and zoomed, and fit again', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  for (const [canvas, fit] of [
    [kPlan, 'f'],
    [kTimeline, '0'],
  ] as const) {
    const first = await pictureOf(page, canvas);
    await wheel(page, canvas, -400);
    const zoomed = await pictureOf(page, canvas);
    assert.notEqual(zoomed, first, `${canvas} zooms`);
    await drag(page, canvas, 90, 0);
    const dragged = await pictureOf(page, canvas);
    assert.notEqual(dragged, zoomed, `${canvas} moves`);
    await drag(page, canvas, -90, 0);
    await page.keyboard.press(fit);
    assert.equal(await pictureOf(page, canvas), first, `${canvas} fits`);
  }
  await page.locator('.plan .stage').focus();
  const before = await pictureOf(page, kPlan);
  await page.keyboard.press('ArrowLeft');
  assert.notEqual(await pictureOf(page, kPlan), before);
  await page.keyboard.press('ArrowRight');
  assert.equal(await pictureOf(page, kPlan), before);
  await page.keyboard.press('+');
  assert.notEqual(await pictureOf(page, kPlan), before);
  await closed(opened);
});

test('lines of the timeline are chosen, opened and folded by keys', async () => {
  const opened = await open(fill(template, { ...small() }));
  const { page } = opened;
  const said = (words: RegExp): Promise<unknown> =>
    page.waitForFunction(
      source => new RegExp(source).test(document.querySelector('.timeline [role=status]')?.textContent ?? ''),
      words.source,
    );
  await page.locator('.timeline .stage').focus();
  await page.keyboard.press('ArrowDown');
  await said(/^Composite events, 2 models, open$/);
  const open1 = await pictureOf(page, kTimeline);
  await page.keyboard.press('Enter');
  await said(/^Composite events, 2 models, folded$/);
  assert.notEqual(await pictureOf(page, kTimeline), open1);
  await page.keyboard.press('Enter');
  await said(/open$/);
  assert.equal(await pictureOf(page, kTimeline), open1);
  await page.keyboard.press('ArrowDown');
  await said(/^BagLeft, \d+ events/);
  await page.keyboard.press('ArrowDown');
  await said(/^without events, 1, folded$/);
  await page.keyboard.press('Enter');
  await page.keyboard.press('ArrowDown');
  await said(/^NeverSeen, 0 events$/);
  for (let i = 0; i < 40; i += 1) {
    await page.keyboard.press('ArrowDown');
  }
  await said(/^PERSON 8, \d+ events/);
  await page.keyboard.press('ArrowUp');
  await said(/^PERSON 7, /);
  await closed(opened);
});

test('the ring goes from one to the next by keys', async () => {
  const fixture = small();
  fixture.data.clock.end = 180_000;
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  const said = (): Promise<string> => page.locator('.plan [role=status]').innerText();
  await page.keyboard.press('a');
  assert.equal(await said(), 'Nobody is there.');
  for (let i = 0; i < 9; i += 1) {
    await page.keyboard.press('Shift+ArrowRight');
  }
  await page.waitForFunction(() => document.querySelector('.clock')?.textContent === '10:16:30.000');
  const bare = await pictureOf(page, kPlan);
  await page.keyboard.press('a');
  const first = await said();
  assert.match(first, /^PERSON \d has the ring\.$/);
  const ringed = await pictureOf(page, kPlan);
  assert.notEqual(ringed, bare);
  await page.keyboard.press('a');
  assert.notEqual(await said(), first);
  await page.keyboard.press('Shift+A');
  assert.equal(await said(), first);
  assert.equal(await pictureOf(page, kPlan), ringed);
  await page.keyboard.press('Escape');
  assert.equal(await pictureOf(page, kPlan), bare);
  await closed(opened);
});

// One pixel wide: red above blue.
const kRedOverBlue =
  'data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAACCAIAAAAW4yFwAAAADUlEQVR42mP4zwAC/wEIAAH/Bs6pJQAAAABJRU5ErkJggg==';

test('the picture of the scene lies where it is placed, upright, in both themes', async () => {
  for (const colorScheme of ['light', 'dark'] as const) {
    for (const placement of [
      [0, 0, 40, 24],
      [0, 24, 40, 0],
    ] as [number, number, number, number][]) {
      const fixture = small();
      fixture.data.scene.objects = [];
      fixture.data.actors = [];
      fixture.tracks.actors = [];
      fixture.data.scene.background = { image: kRedOverBlue, placement };
      const opened = await open(fill(template, { ...fixture }), { colorScheme });
      const { page } = opened;
      const share = colorScheme === 'light' ? 0.85 : 0.5;
      const ground = colorScheme === 'light' ? [244, 246, 249] : [16, 20, 26];
      const mixed = (colour: number[]): number[] =>
        colour.map((part, i) => share * part + (1 - share) * (ground[i] as number));
      const find = (colour: number[]): ReturnType<typeof pixelsLike> =>
        pixelsLike(page, kPlan, mixed(colour), 4);
      await page.waitForTimeout(100);
      const [red, blue] = [await find([255, 0, 0]), await find([0, 0, 255])];
      assert.ok(red.count > 5000 && blue.count > 5000, `${red.count} and ${blue.count} pixels`);
      assert.ok(red.y < 0.5 && blue.y > 0.5, `red at ${red.y}, blue at ${blue.y}`);
      assert.ok(Math.abs(red.x - 0.5) < 0.02);
      await closed(opened);
    }
  }
});

test('a picture that no browser decodes is told, and the rest is shown', async () => {
  const fixture = small();
  fixture.data.scene.background = { image: 'data:image/png;base64,iVBORw0KGgo=', placement: [0, 0, 40, 24] };
  const opened = await open(fill(template, { ...fixture }));
  assert.match(await text(opened.page, '.plan-problem'), /cannot be shown: this browser cannot decode it/);
  assert.equal(await text(opened.page, '.count'), '120 events');
  await closed(opened);
});

test('an event that was merged with an earlier one tells both begins', async () => {
  const fixture = small();
  const evidence = fixture.why.events[0];
  assert.ok(evidence);
  evidence.begin = { seconds: 7.2 };
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.locator('.rows .row').first().click();
  await page.keyboard.press('2');
  assert.match(
    await text(page, '.why-event .merged'),
    /^It is reported from 0 s to [0-9.]+ s: its model merges it with an earlier event\.$/,
  );
  await closed(opened);
});

test('a name cannot turn round what is written after it', async () => {
  const fixture = small();
  fixture.data.scene.objects.forEach(object => {
    object.name = '\u202Egnp.exe\u2066';
  });
  const opened = await open(fill(template, { ...fixture }));
  const { page } = opened;
  await page.locator('.rows .row', { hasText: 'InZone' }).first().click();
  await page.keyboard.press('3');
  await page.waitForSelector('.counts');
  const html = await page.locator('#page').innerHTML();
  assert.doesNotMatch(html, /[\u202a-\u202e\u2066-\u2069]/);
  assert.match(html, /\ufffdgnp\.exe\ufffd/);
  await closed(opened);
});

const kHostile = [
  '<img src=x onerror=alert(1)>',
  '</script><script>alert(2)</script>',
  '"><svg onload=alert(3)>',
  "'; alert(4); '",
  '{{constructor.constructor("alert(5)")()}}',
  'javascript:alert(6)',
  '__proto__',
  'constructor',
  '\u202Eevil\u0000\u0007',
  '=HYPERLINK("http://x")',
  'x'.repeat(20_000),
  '',
];

test('names that are markup, script or far too long stay names', async () => {
  const { data, tracks, why } = small();
  const name = (i: number): string => kHostile[i % kHostile.length] as string;
  data.title = name(0);
  data.types = [name(1), name(7)];
  data.alarms = data.alarms.map((_, i) => name(i));
  data.texts = data.texts.map((_, i) => name(i + 2));
  data.kinds = data.kinds.map((_, i) => name(i + 4));
  data.scene.objects.forEach((object, i) => {
    object.name = name(i);
  });
  data.models.forEach((model, i) => {
    model.name = name(i);
    model.text = name(i + 1);
    model.alarmText = name(i + 2);
    model.objects.forEach((object, j) => {
      object.name = name(i + j);
    });
    model.components.forEach(part => {
      part.name = name(i + 5);
    });
  });
  const opened = await open(fill(template, { data, tracks, why }));
  const { page } = opened;
  await page.keyboard.press('n');
  for (const key of ['2', '3', '1', 'z', '?']) {
    await page.keyboard.press(key);
    await page.waitForTimeout(60);
  }
  assert.equal(await page.locator('img, #page script, #page svg:not(.icon)').count(), 0);
  assert.equal(await text(page, 'h1'), name(0));
  const wide = await page.evaluate(
    () => document.documentElement.scrollWidth > document.documentElement.clientWidth,
  );
  assert.equal(wide, false);
  await page.pdf();
  await closed(opened);
});

test('the policy stops script and network that get in all the same', async () => {
  const opened = await open(fill(template, { ...small() }));
  await opened.page.evaluate(async () => {
    const script = document.createElement('script');
    script.textContent = 'document.title = "broken"';
    document.body.append(script);
    await fetch('https://example.invalid/').catch(() => undefined);
  });
  assert.equal(await opened.page.title(), 'hall – ScenarioMatch');
  assert.ok(
    opened.problems.length >= 2 && opened.problems.every(problem => /Content Security Policy/i.test(problem)),
  );
  await opened.page.close();
});

test('nothing recognised, nobody there, no scene: each is said', async () => {
  const none = hall({ actors: 0, events: 0, milliseconds: 1 });
  none.data.scene.objects = [];
  none.data.clock = { start: '2026-01-01T00:00:00.000', end: 0, frames: 1 };
  none.data.models = [];
  none.why.models = [];
  const opened = await open(fill(template, { ...none }));
  const { page } = opened;
  assert.equal(await text(page, '.empty'), 'No event was recognised.');
  assert.match(await text(page, '.plan-note'), /no zones.*Nobody was tracked/s);
  for (const key of ['2', '3', ' ', 'n', 'z', '0', 'f', 'End']) {
    await page.keyboard.press(key);
    await page.waitForTimeout(30);
  }
  assert.match(await text(page, '.numbers'), /no zones/);
  await closed(opened);
});

test('thousands of actors are drawn and folded away', async () => {
  const opened = await open(fill(template, { ...hall({ actors: 3000, events: 500, milliseconds: 60_000 }) }));
  const { page } = opened;
  for (const key of ['n', '.', 'e', '3']) {
    await page.keyboard.press(key);
    await page.waitForTimeout(50);
  }
  assert.match(await text(page, 'header .facts'), /3,000 actors/);
  await closed(opened);
});

test('both themes have no finding of the accessibility checker', async () => {
  for (const colorScheme of ['light', 'dark'] as const) {
    const opened = await open(fill(template, { ...small() }), { colorScheme, bypassCSP: true });
    const { page } = opened;
    await addChecker(page);
    await page.keyboard.press('n');
    for (const key of ['1', '2', '3', '?']) {
      await page.keyboard.press(key);
      await page.waitForTimeout(150);
      assert.deepEqual(await findings(page), [], `${colorScheme}, key ${key}`);
    }
    await closed(opened);
  }
});

test('a narrow window scrolls down, never sideways, and leaves room to move the time', async () => {
  const options = { viewport: { width: 390, height: 800 }, bypassCSP: true };
  const opened = await open(fill(template, { ...small() }), options);
  const { page } = opened;
  const { wide, tall } = await page.evaluate(() => ({
    wide: document.documentElement.scrollWidth - document.documentElement.clientWidth,
    tall: document.documentElement.scrollHeight - document.documentElement.clientHeight,
  }));
  assert.equal(wide, 0);
  assert.ok(tall > 0);
  const slider = await page.locator('.play-bar input').boundingBox();
  assert.ok(slider && slider.width > 300, `${slider?.width} pixels`);
  for (const part of await page.locator('.play-bar > *').all()) {
    const box = await part.boundingBox();
    assert.ok(box && box.x >= 0 && box.x + box.width <= 390);
  }
  await addChecker(page);
  assert.deepEqual(await findings(page), []);
  await closed(opened);
});

test('the theme switch wins over the system and print is light', async () => {
  const opened = await open(fill(template, { ...small() }), { colorScheme: 'dark' });
  const { page } = opened;
  const theme = (): Promise<string | undefined> =>
    page.evaluate(() => document.documentElement.dataset['theme']);
  assert.equal(await theme(), 'dark');
  const printed = page.evaluate(
    () =>
      new Promise<string>(resolve => {
        window.addEventListener('beforeprint', () =>
          resolve(
            `${document.documentElement.dataset['theme']} ${document.querySelectorAll('.print-list tbody tr').length}`,
          ),
        );
      }),
  );
  await page.pdf();
  assert.equal(await printed, 'light 120');
  assert.equal(await theme(), 'dark');
  await page.keyboard.press('t');
  assert.equal(await theme(), 'light');
  await page.emulateMedia({ colorScheme: 'light' });
  await page.emulateMedia({ colorScheme: 'dark' });
  assert.equal(await theme(), 'light');
  await closed(opened);
});
