import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { NearMiss, WhyNotBin } from '../../src/data';
import { binsIn, summed } from '../../src/why/summary';

const kConstraints = [{ text: 'a < b', pure: true }];

function miss(seconds: number, rank: number[], margin?: number): NearMiss {
  const finding = { text: 'a < b', holds: false, ...(margin === undefined ? {} : { margin }) };
  return { when: { seconds }, objects: [], false: [finding], rank };
}

function bin(candidates: number, firstFalse: number, nearest: NearMiss): WhyNotBin {
  return { candidates, cut_frames: 1, constraints: [{ first_false: firstFalse, nearest }], nearest };
}

test('counts of bins are added, those of empty bins are nothing', () => {
  const sum = summed(
    [bin(5, 2, miss(1, [1, 0, 0.5], 4)), null, bin(7, 3, miss(9, [1, 0, 0.2], 2))],
    kConstraints,
    0,
    3,
  );
  assert.equal(sum.candidates, 12);
  assert.equal(sum.cutFrames, 2);
  assert.deepEqual(sum.constraints[0]?.firstFalse, 5);
  assert.equal(sum.constraints[0]?.nearest?.when.seconds, 9);
});

test('nearest is the smallest rank, number by number, and of equal ones the first', () => {
  const misses = [miss(1, [2, 0, 0]), miss(2, [1, 1, 9]), miss(3, [1, 0, 9]), miss(4, [1, 0, 9])];
  const sum = summed(
    misses.map(one => bin(1, 1, one)),
    kConstraints,
    0,
    4,
  );
  assert.equal(sum.nearest?.when.seconds, 3);
});

test('a miss without a margin is the farthest', () => {
  const sum = summed([bin(1, 1, miss(1, [1])), bin(1, 1, miss(2, [1], 100))], kConstraints, 0, 2);
  assert.equal(sum.constraints[0]?.nearest?.when.seconds, 2);
});

test('a window is made of whole bins, at least of one', () => {
  assert.deepEqual(binsIn(0, 600, 100, 6), [0, 6]);
  assert.deepEqual(binsIn(-20, 640, 100, 6), [0, 6]);
  assert.deepEqual(binsIn(160, 330, 100, 6), [2, 3]);
  assert.deepEqual(binsIn(210, 220, 100, 6), [2, 3]);
  assert.deepEqual(binsIn(590, 700, 100, 6), [5, 6]);
});
