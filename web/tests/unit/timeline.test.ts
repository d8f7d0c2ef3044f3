import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Report } from '../../src/report';
import { buildGroups, laneRange, words, type Lane } from '../../src/timeline/lanes';
import { barPlace, kHeights, layOut, lineAt, totalHeight } from '../../src/timeline/layout';
import { limited, pannedSpan, showing, whole, zoomedSpan } from '../../src/timeline/span';
import { hall } from '../fixture';

const report = new Report(hall({ actors: 6, events: 300, milliseconds: 300_000 }).data, []);
const groups = buildGroups(report);

test('composites stand above their components and actors at the end', () => {
  assert.deepEqual(
    groups.map(group => group.label),
    ['Composite events', 'Composite states', 'Primitive events', 'Primitive states', 'Actors'],
  );
  assert.deepEqual(
    groups[0]?.lanes.map(lane => lane.label),
    ['BagLeft'],
  );
});

test('a state that is made of events stands above them', () => {
  const { data } = hall({ actors: 2, events: 40, milliseconds: 60_000 });
  data.models = data.models.map((model, i) => ({
    ...model,
    kind: i === 4 ? 3 : i === 5 ? 2 : model.kind,
    components:
      i === 5 ? [{ name: 'c1', model: 4, modelName: 'LongVisit' }] : i === 6 ? [] : model.components,
  }));
  assert.deepEqual(
    buildGroups(new Report(data, [])).map(group => group.label),
    ['Composite states', 'Composite events', 'Primitive events', 'Primitive states', 'Actors'],
  );
});

test('models without events stand behind a line that opens', () => {
  const names = (opened: string[]): string[] =>
    layOut(groups, new Set(), new Set(opened)).flatMap(line =>
      line.kind === 'lane' ? [line.lane.label] : [],
    );
  assert.deepEqual(
    groups[0]?.empty.map(lane => lane.label),
    ['NeverSeen'],
  );
  assert.ok(!names([]).includes('NeverSeen'));
  assert.ok(names(['empty kind 3']).includes('NeverSeen'));
});

test('every event has a place in the lane of its model', () => {
  const lanes = groups.filter(group => group.key !== 'actors').flatMap(group => group.lanes);
  assert.equal(
    lanes.reduce((sum, lane) => sum + lane.events.length, 0),
    report.count,
  );
});

test('events in one row of a lane do not touch', () => {
  const busiest = groups.flatMap(group => group.lanes).reduce((a, b) => (a.rows > b.rows ? a : b));
  assert.ok(busiest.rows > 1);
  const ends = new Map<number, number>();
  busiest.events.forEach((event, i) => {
    const row = busiest.rowOf[i] as number;
    assert.ok(report.begin(event) > (ends.get(row) ?? -1));
    ends.set(row, report.eventEnd(event));
  });
});

test('the range of a lane holds each event that touches the span', () => {
  for (const lane of groups.flatMap(group => group.lanes)) {
    const [first, last] = laneRange(report, lane, 100_000, 120_000);
    const inside = new Set(lane.events.slice(first, last));
    for (const event of lane.events) {
      if (report.begin(event) <= 120_000 && report.eventEnd(event) >= 100_000) {
        assert.ok(inside.has(event));
      }
    }
  }
});

test('lines follow each other without holes, folded and open', () => {
  const open = (groups[3]?.lanes[0] as Lane).key;
  const lines = layOut(groups, new Set(['actors']), new Set([open]));
  lines.slice(1).forEach((line, i) => {
    const before = lines[i];
    assert.equal(line.top, (before?.top ?? 0) + (before?.height ?? 0));
  });
  assert.equal(lineAt(lines, 0)?.kind, 'group');
  assert.equal(lineAt(lines, totalHeight(lines) - 1), lines[lines.length - 1]);
  assert.equal(lineAt(lines, totalHeight(lines)), undefined);
  assert.equal(lineAt(lines, -1), undefined);
});

test('bars of an open lane lie inside it', () => {
  const lane = groups[3]?.lanes[0] as Lane;
  const line = layOut(groups, new Set(), new Set([lane.key])).find(
    one => one.kind === 'lane' && one.lane === lane,
  );
  assert.ok(line && line.height === lane.rows * kHeights.row + kHeights.pad);
  lane.events.forEach((_, position) => {
    const place = barPlace(line, position);
    assert.ok(place.top >= line.top && place.top + place.height <= line.top + line.height);
  });
});

test('kinds are spelled as words', () => {
  assert.equal(words('CompositeEvent'), 'Composite events');
  assert.equal(words(''), '');
});

test('zooming keeps the time under the pointer and never leaves the recording', () => {
  const span = zoomedSpan({ from: 0, to: 100_000 }, 2, 30_000, 100_000);
  assert.equal((30_000 - span.from) / (span.to - span.from), 0.3);
  const out = zoomedSpan(span, 1e-9, 30_000, 100_000);
  assert.deepEqual(out, whole(100_000));
  const end = pannedSpan(span, 1e9, 100_000);
  assert.ok(end.to <= 103_002 && end.to - end.from === span.to - span.from);
  assert.ok(limited({ from: 5, to: 5 }, 100_000).to > 5);
});

test('a span moves no more than needed to show an event', () => {
  const span = { from: 10_000, to: 20_000 };
  assert.equal(showing(span, 12_000, 13_000, 100_000), span);
  const later = showing(span, 30_000, 31_000, 100_000);
  assert.ok(later.from <= 30_000 && later.to >= 31_000 && later.to - later.from === 10_000);
  const wider = showing(span, 5000, 60_000, 100_000);
  assert.ok(wider.from <= 5000 && wider.to >= 60_000);
});
