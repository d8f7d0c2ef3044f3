import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Point } from '../../src/data';
import { actorsOverTime, countsOfModels, eventsPerBin, histogram, median } from '../../src/numbers/count';
import { isInside, stays } from '../../src/numbers/dwell';
import { Report } from '../../src/report';
import { decodeTracks, type Track } from '../../src/tracks';
import { hall } from '../fixture';
import { Random } from '../random';

const square: Point[] = [
  [0, 0],
  [10, 0],
  [10, 10],
  [0, 10],
];

function track(points: [number, number, number][], gap: number[] = []): Track {
  const deltas = (column: number): number[] =>
    points.map((point, i) => (point[column] as number) - (points[i - 1]?.[column] ?? 0));
  return decodeTracks({
    quantum: 1,
    steps: [],
    actors: [{ t: deltas(0), x: deltas(1), y: deltas(2), gap }],
  })[0] as Track;
}

test('who walks through a zone stays from border to border', () => {
  assert.deepEqual(stays(track([[0, -10, 5], [3000, 20, 5]]), square), [1000]); // prettier-ignore
});

test('who is in a zone from the beginning to the end stays all the time', () => {
  assert.deepEqual(stays(track([[100, 2, 2], [900, 4, 8]]), square), [800]); // prettier-ignore
});

test('a gap ends a stay', () => {
  assert.deepEqual(stays(track([[0, 2, 2], [500, 3, 3], [2000, 4, 4], [2600, 5, 5]], [2]), square), [500, 600]); // prettier-ignore
});

test('who is seen in a zone at one moment only stays no time', () => {
  const flicker = track([[0, 2, 2], [5000, 3, 3], [9000, 30, 3]], [1, 2]); // prettier-ignore
  assert.deepEqual(stays(flicker, square), [0, 0]);
});

test('who passes by never stays', () => {
  assert.deepEqual(stays(track([[0, -10, 15], [3000, 20, 15]]), square), []); // prettier-ignore
  assert.deepEqual(stays(track([]), square), []);
});

test('stays agree with looking at the track in small steps', () => {
  const random = new Random(3);
  for (let round = 0; round < 50; round += 1) {
    const points = Array.from({ length: 12 }, (_, i): [number, number, number] => [
      i * 1000,
      Math.round(random.between(-15, 25)),
      Math.round(random.between(-15, 25)),
    ]);
    const walk = track(points);
    const total = stays(walk, square).reduce((sum, length) => sum + length, 0);
    let stepped = 0;
    for (let i = 1; i < points.length; i += 1) {
      const [from, to] = [points[i - 1], points[i]] as [[number, number, number], [number, number, number]];
      for (let step = 0; step < 1000; step += 1) {
        const share = (step + 0.5) / 1000;
        stepped += Number(
          isInside([from[1] + share * (to[1] - from[1]), from[2] + share * (to[2] - from[2])], square),
        );
      }
    }
    assert.ok(Math.abs(total - stepped) <= 30, `round ${round}: ${total} and ${stepped}`);
  }
});

const report = new Report(hall({ actors: 9, events: 400, milliseconds: 1_200_000 }).data, []);

test('counts of models add up to the events', () => {
  assert.equal(
    countsOfModels(report).reduce((sum, entry) => sum + entry.count, 0),
    400,
  );
});

test('bins over time add up to the events, of all models and of one', () => {
  const sum = (model: number): number =>
    eventsPerBin(report, model, 60_000).values.reduce((a, b) => a + b, 0);
  assert.equal(sum(-1), 400);
  assert.equal(sum(2), countsOfModels(report)[2]?.count);
});

test('an event that began before the first frame counts in the first bin', () => {
  const data = hall({ actors: 1, events: 1, milliseconds: 1_200_000 }).data;
  data.events.begin[0] = -40;
  assert.equal(eventsPerBin(new Report(data, []), -1, 60_000).values[0], 1);
});

test('actors over time begin and end with those that are there', () => {
  const series = actorsOverTime(report);
  assert.equal(Math.max(...series.values), 9);
  assert.equal(series.values[series.values.length - 1], 0);
  assert.ok(series.times.every((time, i) => i === 0 || time >= (series.times[i - 1] as number)));
});

test('actors that are out of view are not counted', () => {
  const { data } = hall({ actors: 2, events: 0, milliseconds: 10_000 });
  data.actors = data.actors.map(actor => ({ ...actor, first: 0, last: 10_000 }));
  const tracks = [
    track([[0, 1, 1], [1000, 2, 2], [8000, 2, 2], [10_000, 3, 3]], [2]),
    track([]),
  ]; // prettier-ignore
  const { times, values } = actorsOverTime(new Report(data, tracks));
  assert.deepEqual([times, values], [[0, 1000, 8000, 10_000, 10_000], [2, 1, 2, 0, 0]]); // prettier-ignore
});

test('a histogram counts every length once', () => {
  const lengths = [0, 10, 5000, 5001, 90_000];
  const { edges, counts } = histogram(lengths);
  assert.equal(
    counts.reduce((a, b) => a + b, 0),
    lengths.length,
  );
  assert.ok((edges[edges.length - 1] as number) > 90_000);
  assert.equal(histogram([]).counts.length, 1);
});

test('the median of an even count lies between the middle two', () => {
  assert.equal(median([4, 1, 3, 2]), 2.5);
  assert.equal(median([5]), 5);
});
