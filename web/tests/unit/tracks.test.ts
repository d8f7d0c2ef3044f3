import assert from 'node:assert/strict';
import { test } from 'node:test';
import {
  decodeTracks,
  evenFrames,
  frameTimes,
  nextFrame,
  placeAt,
  sightings,
  trail,
  type Track,
} from '../../src/tracks';

// At (0, 0) at 0 s, (10, 0) at 1 s; unseen until (10, 10) at 5 s, (20, 10) at 7 s.
const track = decodeTracks({
  quantum: 0.5,
  steps: [],
  actors: [{ t: [0, 1000, 4000, 2000], x: [0, 20, 0, 20], y: [0, 0, 20, 0], gap: [2] }],
})[0] as Track;

test('between two key points an actor goes straight', () => {
  assert.deepEqual(placeAt(track, 250), [2.5, 0]);
  assert.deepEqual(placeAt(track, 6000), [15, 10]);
});

test('at a key point an actor is there, the last before a gap and the first after it too', () => {
  assert.deepEqual(placeAt(track, 1000), [10, 0]);
  assert.deepEqual(placeAt(track, 5000), [10, 10]);
  assert.deepEqual(placeAt(track, 7000), [20, 10]);
});

test('before, after and in a gap nobody is there', () => {
  assert.equal(placeAt(track, -1), undefined);
  assert.equal(placeAt(track, 3000), undefined);
  assert.equal(placeAt(track, 7001), undefined);
});

test('a trail is broken by a gap and ends where the actor is', () => {
  assert.deepEqual(trail(track, 500, 6000), [
    [
      [5, 0],
      [10, 0],
    ],
    [
      [10, 10],
      [15, 10],
    ],
  ]);
  assert.deepEqual(trail(track, 2000, 3000), []);
});

test('sightings are the times without a gap', () => {
  assert.deepEqual(sightings(track), [
    [0, 1000],
    [5000, 7000],
  ]);
});

test('frames are found whenever they came', () => {
  const times = frameTimes({ quantum: 1, steps: [[40, 2], [880, 1], [40, 1]], actors: [] }); // prettier-ignore
  assert.deepEqual([...times], [0, 40, 80, 960, 1000]);
  const next = (time: number): number => nextFrame(times, time, 1);
  const before = (time: number): number => nextFrame(times, time, -1);
  assert.deepEqual([0, 39.9, 80, 500, 960, 1000, 2000].map(next), [40, 40, 960, 960, 1000, 1000, 1000]);
  assert.deepEqual([0, 39.9, 80, 500, 960, 1000, 2000].map(before), [0, 0, 40, 80, 80, 960, 1000]);
  assert.deepEqual([...evenFrames({ start: '', end: 100, frames: 3 })], [0, 50, 100]);
  assert.deepEqual([...evenFrames({ start: '', end: 0, frames: 0 })], [0]);
});

test('a track without key points is nowhere', () => {
  const empty = decodeTracks({
    quantum: 1,
    steps: [],
    actors: [{ t: [], x: [], y: [], gap: [] }],
  })[0] as Track;
  assert.equal(placeAt(empty, 0), undefined);
  assert.deepEqual(trail(empty, 0, 10), []);
  assert.deepEqual(sightings(empty), []);
});
