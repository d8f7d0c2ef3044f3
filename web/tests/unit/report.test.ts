import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Report } from '../../src/report';
import { hall } from '../fixture';

test('objects of the scene are known at any position', () => {
  const { data } = hall({ actors: 3, events: 1, milliseconds: 60_000 });
  const count = 40;
  data.events.objects[0] = Array.from({ length: count }, () => 1);
  data.events.fixed[0] = 2 ** 31 + 2 ** 33 + 1;
  const kinds = new Report(data, []).participants(0).map(({ kind }) => kind);
  assert.deepEqual(
    kinds.flatMap((kind, position) => (kind === 'scene' ? [position] : [])),
    [0, 31, 33],
  );
  assert.equal(kinds.length, count);
});
