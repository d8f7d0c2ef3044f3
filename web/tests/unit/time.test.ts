import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ClockText, durationText, tickStep } from '../../src/time';

const clock = new ClockText('2026-09-14T10:15:00.000');

test('a time is shown by the clock of the recording, whatever zone the browser is in', () => {
  assert.equal(clock.exact(4600), '10:15:04.600');
  assert.equal(clock.tenths(4660), '10:15:04.7');
  assert.equal(clock.full(0), '2026-09-14T10:15:00.000');
  assert.equal(clock.date(14 * 3_600_000), '2026-09-15');
});

test('a clock that is no clock starts in 1970 instead of failing', () => {
  assert.equal(new ClockText('yesterday').full(1000), '1970-01-01T00:00:01.000');
});

test('durations keep the digits that matter', () => {
  assert.equal(durationText(40), '0.04 s');
  assert.equal(durationText(6680), '6.68 s');
  assert.equal(durationText(12_444), '12.4 s');
  assert.equal(durationText(185_000), '3 min 05 s');
  assert.equal(durationText(59_990), '60 s');
  assert.equal(durationText(7_440_000), '2 h 04 min');
});

test('ticks fall on round times of the clock', () => {
  assert.deepEqual(new ClockText('2026-01-01T10:00:07').ticks(0, 25_000, 10_000), [3000, 13_000, 23_000]);
});

test('the step of ticks is round and leaves no more of them than asked for', () => {
  assert.equal(tickStep(60_000, 6), 10_000);
  assert.equal(tickStep(7_200_000, 8), 15 * 60_000);
  assert.equal(tickStep(10 * 86_400_000, 5), 2 * 86_400_000);
});

test('a typed time is read as clock or as seconds', () => {
  assert.equal(clock.read('10:16'), 60_000);
  assert.equal(clock.read(' 10:15:04.6 '), 4600);
  assert.equal(clock.read('12.5'), 12_500);
  assert.equal(clock.read('soon'), undefined);
  assert.equal(new ClockText('2026-09-14T23:50:00').read('00:10'), 20 * 60_000);
});
