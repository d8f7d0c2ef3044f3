import assert from 'node:assert/strict';
import { test } from 'node:test';
import { readReport, readTracks, readWhy } from '../../src/readReport';
import { DataProblem } from '../../src/shape';
import { hall } from '../fixture';
import { Random } from '../random';

const whole = hall({ actors: 3, events: 20, milliseconds: 60_000 });

function copy(): Record<string, unknown> {
  return JSON.parse(JSON.stringify(whole.data)) as Record<string, unknown>;
}

test('what the program writes is read as it is', () => {
  const { scene, ...rest } = readReport(copy());
  const { scene: written, ...expected } = whole.data;
  assert.deepEqual(rest, expected);
  assert.deepEqual(scene, written);
});

test('another version is refused by its number', () => {
  assert.throws(() => readReport({ ...copy(), version: 2 }), /version 2, this page reads version 1/);
});

test('a column that is too short is named', () => {
  const data = copy();
  (data['events'] as { end: number[] }).end.pop();
  assert.throws(() => readReport(data), /events\.end has 19 entries, not 20/);
});

test('a picture that is upside down in its numbers makes y go down', () => {
  const data = copy();
  const background = { image: 'data:image/png;base64,', placement: [0, 288, 384, 0] };
  data['scene'] = { objects: [], background };
  assert.equal(readReport(data).scene.down, true);
});

test('a picture from elsewhere is refused', () => {
  const data = copy();
  data['scene'] = { objects: [], background: { image: 'file:///etc/passwd', placement: [0, 0, 1, 1] } };
  assert.throws(() => readReport(data), /background is no picture/);
});

test('a level without a name is none', () => {
  const data = copy();
  data['alarms'] = ['', 'LOW', 'HIGH', 'HIGHER'];
  const read = readReport(data);
  assert.deepEqual(read.alarms, ['LOW', 'HIGH', 'HIGHER']);
  assert.deepEqual(
    read.models.map(model => model.alarm),
    [-1, -1, -1, -1, 0, 1, 2],
  );
});

test('a confidence that is no number is none, another number that is none is refused', () => {
  const data = copy();
  const events = data['events'] as { confidence: (number | null)[]; begin: (number | null)[] };
  events.confidence[3] = null;
  assert.equal(readReport(data).events.confidence[3], null);
  events.begin[3] = null;
  assert.throws(() => readReport(data), /events\.begin\[3\] is no number/);
});

test('tracks of other actors are refused', () => {
  assert.throws(() => readTracks(whole.tracks, 4), /tracks of 3 actors, not of 4/);
  assert.equal(readTracks(whole.tracks, 3).actors.length, 3);
});

test('steps that are of no frames are refused', () => {
  for (const steps of [[[40, -1]], [[40, 1.5]], [[40, 1e12]], [[40]], 'x']) {
    assert.throws(() => readTracks({ ...whole.tracks, steps }, 3), DataProblem);
  }
});

test('explanations of other events are refused', () => {
  assert.throws(() => readWhy(whole.why, 21, 7), /not those of these events/);
  assert.equal(readWhy(whole.why, 20, 7).binWidth, whole.why.binWidth);
});

// Whatever is wrong is a problem with words, never an error of the page.
test('damage anywhere is told or harmless', () => {
  const random = new Random(11);
  const damages: unknown[] = [null, 'x', -7, 1e300, [], {}, true];
  for (let round = 0; round < 2000; round += 1) {
    const data = copy();
    let place: Record<string, unknown> = data;
    for (;;) {
      const keys = Object.keys(place);
      const key = keys[random.whole(keys.length)];
      if (key === undefined) {
        break;
      }
      const next = place[key];
      if (typeof next !== 'object' || next === null || random.next() < 0.3) {
        place[key] = damages[random.whole(damages.length)];
        break;
      }
      place = next as Record<string, unknown>;
    }
    try {
      readReport(data);
    } catch (error) {
      assert.ok(error instanceof DataProblem, String(error));
    }
  }
});
