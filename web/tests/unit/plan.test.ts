import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Point } from '../../src/data';
import { boxOf, fit, panned, scaleBarLength, toGround, toScreen, zoomed } from '../../src/plan/projection';

const box = { left: 0, right: 40, low: 0, high: 20 };

test('up is up, unless the scene says that y goes down', () => {
  const up = fit(box, false, 400, 300, 20);
  const down = fit(box, true, 400, 300, 20);
  assert.ok(toScreen(up, [0, 20])[1] < toScreen(up, [0, 0])[1]);
  assert.ok(toScreen(down, [0, 20])[1] > toScreen(down, [0, 0])[1]);
});

test('all of the scene fits', () => {
  const projection = fit(box, false, 400, 300, 20);
  for (const corner of [
    [0, 0],
    [40, 20],
  ] as Point[]) {
    const [x, y] = toScreen(projection, corner);
    assert.ok(x >= 20 && x <= 380 && y >= 20 && y <= 280);
  }
});

test('a scene of one point has a place and a scale', () => {
  const projection = fit(boxOf([[3, 4]]) ?? box, false, 200, 200, 10);
  assert.deepEqual(toScreen(projection, [3, 4]), [100, 100]);
  assert.ok(Number.isFinite(projection.scale));
  assert.equal(boxOf([]), undefined);
});

test('what is under the pointer stays there when zooming', () => {
  const projection = fit(box, false, 400, 300, 20);
  const at: Point = [50, 70];
  const before = toGround(projection, at);
  const after = toGround(zoomed(projection, 3, at, projection.scale), at);
  assert.ok(Math.hypot(before[0] - after[0], before[1] - after[1]) < 1e-9);
});

test('dragging moves the ground with the pointer', () => {
  const projection = fit(box, false, 400, 300, 20);
  const before = toScreen(projection, [10, 10]);
  const after = toScreen(panned(projection, 15, -8), [10, 10]);
  assert.ok(Math.abs(after[0] - before[0] - 15) < 1e-9 && Math.abs(after[1] - before[1] + 8) < 1e-9);
});

test('the scale bar has a round length', () => {
  assert.equal(scaleBarLength(10, 120), 10);
  assert.equal(scaleBarLength(17.3, 120), 5);
  assert.equal(scaleBarLength(0.05, 120), 2000);
});
