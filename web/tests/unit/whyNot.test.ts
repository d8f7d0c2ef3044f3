import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Model, WhyData, WhyNotBin } from '../../src/data';
import { Report } from '../../src/report';
import { sentencesOf } from '../../src/why/sentences';
import { whyNot, windowOf } from '../../src/why/whyNot';
import { hall } from '../fixture';

const kMinute = 60_000;

function model(name: string, components: [string, number, string][], constraints = 0): Model {
  return {
    name,
    kind: 0,
    alarm: -1,
    alarmText: '',
    text: '',
    objects: [],
    components: components.map(([variable, part, modelName]) => ({ name: variable, model: part, modelName })),
    constraints: Array.from({ length: constraints }, (_, i) => ({ text: `c${i}`, pure: i === 0 })),
  };
}

function bin(part: Partial<WhyNotBin> = {}): WhyNotBin {
  return { frames: 10, candidates: 0, cut_frames: 0, ...part };
}

// What is said of the first model over all bins.
function said(models: Model[], bins: (WhyNotBin | null)[][], change?: (report: Report) => void): string[] {
  const { data } = hall({ actors: 1, events: 0, milliseconds: bins[0]?.length ?? 1 });
  data.clock.end = (bins[0]?.length ?? 1) * kMinute;
  data.models = models;
  const report = new Report(data, []);
  change?.(report);
  const why: WhyData = {
    events: data.events.id.map(() => null),
    binWidth: kMinute,
    lookBack: kMinute,
    models: bins.map(one => ({ bins: one })),
  };
  return sentencesOf(whyNot(report, why, 0, windowOf(report, why, 0, data.clock.end)));
}

test('a component that was never recognised is told with its own reasons', () => {
  const models = [
    model('Meeting', [['c1', 1, 'Near']]),
    model('Near', [['c2', 2, 'Stands']]),
    model('Stands', [], 2),
  ];
  const constraints = [{ first_false: 3 }, { first_false: 8 }];
  assert.deepEqual(said(models, [[bin()], [bin()], [bin({ candidates: 11, constraints })]]), [
    'Meeting was not recognised from 0 s to 60 s.',
    'Meeting needs c1 (Near), which was never recognised.',
    'Near needs c2 (Stands), which was never recognised.',
    'c1 was the first to be false for 8 candidates.',
    'Its operator promises nothing, so its values are not known.',
  ]);
});

test('a type is unseen that is unseen in every bin with a frame', () => {
  const bins = [bin({ unseen_types: ['Bag', 'Person'] }), null, bin({ unseen_types: ['Bag'] })];
  assert.deepEqual(said([model('AtBag', [])], [bins]), [
    'AtBag was not recognised from 0 s to 180 s.',
    'No object of type Bag was seen.',
  ]);
  assert.deepEqual(said([model('AtBag', [])], [[...bins, bin()]])[1], 'There was no candidate.');
});

test('components that were recognised without a candidate were never together', () => {
  const models = [model('Meeting', [['c1', 1, 'Near']]), model('Near', [])];
  const add = ({ data: { events } }: Report): void => {
    events.id.push(5);
    events.model.push(1);
    events.begin.push(1000);
    events.end.push(2000);
  };
  assert.deepEqual(said(models, [[bin()], [bin()]], add).slice(1), [
    'The components of Meeting were recognised, but never together.',
  ]);
});

test('who was not believed enough is told with time and numbers', () => {
  const when = { seconds: 4.2 };
  const objects = [{ variable: 'p', id: 3 }];
  const misses = [
    bin({ candidates: 2, confidence: { times: 1, threshold: 0.5, confidence: 0.25, when: { seconds: 1 } } }),
    bin({ candidates: 2, confidence: { times: 2, threshold: 0.5, confidence: 0.4, when, objects } }),
    bin({ candidates: 2, confidence: { times: 1, threshold: 0.5, confidence: null } }),
  ];
  assert.deepEqual(said([model('Near', [])], [misses]).slice(1), [
    '6 candidates were tried.',
    '4 candidates met all constraints and were not confident enough: 0.4 at best (p=3 at 4.2 s), 0.5 needed, ' +
      '0.1 short.',
  ]);
});

test('the nearest is told with all that was false', () => {
  const nearest = {
    when: { seconds: 7 },
    objects: [{ variable: 'z', id: 0, name: 'Floor' }],
    false: [{ text: 'c0', holds: false, seen: '3.2', needed: '< 2', margin: 1.2, note: '1.2 too much' }],
    rank: [1, 0, 0.6],
    hindsight: true,
  };
  const constraints = [{ first_false: 1, nearest }];
  assert.deepEqual(
    said([model('Near', [], 1)], [[bin({ candidates: 1, cut_frames: 1, constraints, nearest })]]),
    [
      'Near was not recognised from 0 s to 60 s.',
      '1 candidate was tried.',
      'In 1 frame there were too many candidates to try all.',
      'Near came nearest with z=Floor at 7 s: 1 of 1 constraints was false.',
      'c0: 3.2, needed < 2, 1.2 too much.',
      'Sub-events that were still going on then are taken as they were in the end.',
    ],
  );
});

test('a model that contains itself, and one without frames, are told and done with', () => {
  const circle = [model('A', [['c1', 1, 'B']]), model('B', [['c2', 0, 'A']])];
  assert.deepEqual(said(circle, [[bin()], [bin()]]).slice(1), [
    'A needs c1 (B), which was never recognised.',
    'B needs c2 (A), which was never recognised.',
  ]);
  assert.deepEqual(said(circle, [[null], [null]]), ['A was not tried: no frame lies in the time asked for.']);
});

test('an event that recognition may look back at is there for the whole', () => {
  const { data } = hall({ actors: 1, events: 0, milliseconds: 4 * kMinute });
  data.models = [model('Meeting', [['c1', 1, 'Near']]), model('Near', [])];
  data.events = { ...data.events, id: [5], model: [1], begin: [1000], end: [90_000] };
  const report = new Report(data, []);
  const bins = Array.from({ length: 4 }, () => bin());
  const why = { events: [null], binWidth: kMinute, lookBack: kMinute, models: [{ bins }, { bins }] };
  const seen = (from: number): number | undefined =>
    whyNot(report, why, 0, windowOf(report, why, from, from + kMinute)).components[0]?.events;
  assert.deepEqual([seen(0), seen(kMinute), seen(2 * kMinute), seen(3 * kMinute)], [1, 1, 1, 0]);
});
