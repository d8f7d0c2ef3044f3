import assert from 'node:assert/strict';
import { test } from 'node:test';
import { csvText, toCsv, toJson } from '../../src/list/exportEvents';
import { kNoFilter, kWithoutAlarm, passing, type Filter } from '../../src/list/filter';
import { kColumnNames, sorted } from '../../src/list/sort';
import { rowsInView, scrollFor } from '../../src/list/window';
import { Report } from '../../src/report';
import { hall } from '../fixture';

const report = new Report(hall({ actors: 6, events: 200, milliseconds: 300_000 }).data, []);
const all = passing(report, kNoFilter);

function kept(part: Partial<Filter>): number[] {
  return [...passing(report, { ...kNoFilter, ...part })];
}

function those(holds: (event: number) => boolean): number[] {
  return [...all].filter(holds);
}

test('without a filter all events pass', () => {
  assert.equal(all.length, 200);
});

test('each field lets through what it says', () => {
  assert.deepEqual(
    kept({ model: 1 }),
    those(event => report.model(event).name === 'Waits'),
  );
  assert.deepEqual(
    kept({ kind: 2 }),
    those(event => report.model(event).kind === 2),
  );
  assert.deepEqual(
    kept({ alarm: 1 }),
    those(event => report.alarm(event) >= 1),
  );
  assert.deepEqual(
    kept({ shortest: 5000, longest: 9000 }),
    those(event => report.duration(event) >= 5000 && report.duration(event) <= 9000),
  );
  assert.deepEqual(
    kept({ from: 60_000, to: 90_000 }),
    those(event => report.eventEnd(event) >= 60_000 && report.begin(event) <= 90_000),
  );
  assert.deepEqual(
    kept({ alarm: kWithoutAlarm }),
    those(event => report.alarm(event) === -1),
  );
  assert.ok(kept({ alarm: kWithoutAlarm }).length > 0 && kept({ alarm: 0 }).length > 0);
  assert.ok(kept({ model: 1 }).length > 0 && kept({ kind: 2 }).length > 0 && kept({ alarm: 1 }).length > 0);
});

test('actors and zones of the same number are told apart', () => {
  const actorTwo = kept({ actor: 1 });
  const zoneTwo = kept({ zone: 2 });
  assert.ok(actorTwo.length > 0 && zoneTwo.length > 0);
  assert.ok(
    actorTwo.every(event => report.participants(event).some(one => one.kind === 'actor' && one.index === 1)),
  );
  assert.ok(zoneTwo.every(event => report.bindings(event).includes('z=Counter')));
});

test('all words must be found, in any place', () => {
  assert.deepEqual(
    kept({ words: 'counter WAITS' }),
    those(event => report.model(event).name === 'Waits' && report.bindings(event).includes('Counter')),
  );
  assert.deepEqual(kept({ words: 'no such words' }), []);
});

test('sorting goes both ways and leaves what is alike in the order of time', () => {
  const up = sorted(report, all, { column: 'duration', isDown: false });
  const down = sorted(report, all, { column: 'alarm', isDown: true });
  for (let i = 1; i < up.length; i += 1) {
    assert.ok(report.duration(up[i - 1] as number) <= report.duration(up[i] as number));
    const [before, after] = [down[i - 1] as number, down[i] as number];
    assert.ok(
      report.alarm(before) > report.alarm(after) ||
        (report.alarm(before) === report.alarm(after) && report.begin(before) <= report.begin(after)),
    );
  }
});

test('events are sorted by every column, with each event once', () => {
  const keys: Record<string, (event: number) => string | number> = {
    kind: event => report.kindName(report.model(event)),
    actor: event =>
      report.participants(event).flatMap(one => (one.kind === 'actor' ? [one.index] : []))[0] ?? -1,
    zone: event => /z=(.*)/.exec(report.bindings(event))?.[1] ?? '',
    model: event => report.model(event).name,
    begin: event => report.begin(event),
  };
  for (const [column] of kColumnNames) {
    const order = [...sorted(report, all, { column, isDown: false })];
    assert.deepEqual(
      [...order].sort((a, b) => a - b),
      [...all],
      column,
    );
    const key = keys[column];
    order.slice(1).forEach((event, i) => {
      assert.ok(!key || key(order[i] as number) <= key(event), `${column}, row ${i}`);
    });
  }
});

test('texts with numbers are sorted by the numbers', () => {
  const order = sorted(report, all, { column: 'objects', isDown: false });
  const names = [...order].map(event => report.bindings(event));
  assert.ok(names.indexOf('p=2 b=5') < names.findIndex(name => name.startsWith('p=3 ')));
});

test('text that a spreadsheet takes for a formula gets an apostrophe', () => {
  assert.equal(csvText('=1+1'), "'=1+1");
  assert.equal(csvText('@cmd'), "'@cmd");
  assert.equal(csvText('+x'), "'+x");
  assert.equal(csvText('-1.5'), "'-1.5");
  assert.equal(csvText('\tx'), "'\tx");
  assert.equal(csvText('\rx'), '"\'\rx"');
  assert.equal(csvText('a "b", c'), '"a ""b"", c"');
  assert.equal(csvText('plain'), 'plain');
});

test('CSV has a line for each event and the columns of the program', () => {
  const lines = toCsv(report, all.slice(0, 3)).split('\r\n');
  assert.equal(lines.length, 5);
  assert.equal(
    lines[0],
    'id,name,kind,alarm_level,alarm,text,confidence,begin,begin_frame,end,end_frame,duration,objects,sub_events',
  );
  assert.ok((lines[1] as string).startsWith(`${report.id(0)},${report.model(0).name},`));
});

test('JSON says of an event what the program says', () => {
  const { data } = hall({ actors: 6, events: 200, milliseconds: 300_000 });
  const composite = data.events.model.indexOf(4);
  data.alarmNumbers = [0, 7, 8, 9];
  data.texts[4] = 'a text of its own';
  data.events.objects[composite] = [2, 1];
  data.events.subEvents[composite] = [-1, 3];
  data.events.subEventIds[composite] = [77, 3];
  const other = new Report(data, []);
  const [event] = JSON.parse(toJson(other, Int32Array.of(composite))) as unknown[];
  assert.deepEqual(event, {
    id: composite,
    name: 'LongVisit',
    kind: 'CompositeState',
    alarm_level: 'URGENT',
    alarm: 7,
    text: 'a text of its own',
    confidence: data.events.confidence[composite],
    begin: other.clock.full(other.begin(composite)),
    begin_frame: data.events.beginFrame[composite],
    end: other.clock.full(other.eventEnd(composite)),
    end_frame: data.events.endFrame[composite],
    duration: other.duration(composite) / 1000,
    objects: [
      { variable: 'p', type: 'Person', id: 2, name: '' },
      { variable: 'z', type: 'Zone', id: 1, name: 'Waiting area' },
    ],
    sub_events: [
      { variable: 'c1', id: 77, name: 'InZone' },
      { variable: 'c2', id: 3, name: 'Waits' },
    ],
  });
});

test('a confidence that is no number is sorted below all and exported as the program does', () => {
  const data = hall({ actors: 6, events: 20, milliseconds: 300_000 }).data;
  data.events.confidence[7] = null;
  const odd = new Report(data, []);
  const order = sorted(odd, passing(odd, kNoFilter), { column: 'confidence', isDown: false });
  assert.equal(order[0], 7);
  const [event] = JSON.parse(toJson(odd, Int32Array.of(7))) as { confidence: unknown }[];
  assert.equal(event?.confidence, null);
  assert.match(toCsv(odd, Int32Array.of(7)), /,nan,2026-/);
});

test('only rows in view and a few more are made', () => {
  assert.deepEqual(rowsInView(0, 300, 30, 50_000), { first: 0, last: 16 });
  assert.deepEqual(rowsInView(3000, 300, 30, 105), { first: 94, last: 105 });
  assert.deepEqual(rowsInView(9000, 300, 30, 3), { first: 3, last: 3 });
});

test('a row is brought into view by the shortest way', () => {
  assert.equal(scrollFor(2, 90, 300, 30), 60);
  assert.equal(scrollFor(20, 0, 300, 30), 330);
  assert.equal(scrollFor(4, 90, 300, 30), 90);
});
