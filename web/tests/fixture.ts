import type {
  Actor,
  CodedTrack,
  Evidence,
  Model,
  Point,
  ReportData,
  SceneObject,
  TracksData,
  WhyData,
} from '../src/data';
import { Random } from './random';

export interface Size {
  actors: number;
  events: number;
  milliseconds: number;
  // Milliseconds from one key point of a track to the next.
  step?: number;
  // How many events are explained.
  explained?: number;
}

export interface Fixture {
  data: ReportData;
  tracks: TracksData;
  why: WhyData;
}

const kHall = { width: 40, height: 24 };
const kQuantum = 0.01;
const kStep = 2000;
const kFrame = 40;
const kExplained = 300;
const kMetresPerSecond = 1.2;

// A hall with people and bags who walk about, and events of some models that refer to each other.
export function hall(size: Size, seed = 7): Fixture {
  const random = new Random(seed);
  const actors: Actor[] = [];
  const tracks: CodedTrack[] = [];
  for (let i = 0; i < size.actors; i += 1) {
    const first = Math.floor(random.between(0, size.milliseconds * 0.3));
    const last = Math.floor(random.between(size.milliseconds * 0.7, size.milliseconds));
    actors.push({ id: i + 1, type: i % 5 === 4 ? 1 : 0, first, last });
    tracks.push(walk(random, first, last, size.step ?? kStep));
  }
  const data: ReportData = {
    version: 1,
    program: '0.1.0',
    title: 'hall',
    clock: {
      start: '2026-09-14T10:15:00.000',
      end: size.milliseconds,
      frames: Math.floor(size.milliseconds / 40) + 1,
    },
    scene: { objects: sceneObjects(), background: null, down: false, unit: 'm' },
    types: ['PERSON', 'BAG'],
    actors,
    alarms: ['NOTURGENT', 'URGENT', 'VERYURGENT', 'SUPERURGENT'],
    alarmNumbers: [0, 1, 2, 3],
    texts: models().map(model => model.alarmText),
    kinds: ['PrimitiveState', 'PrimitiveEvent', 'CompositeState', 'CompositeEvent'],
    models: models(),
    events: {
      id: [],
      model: [],
      begin: [],
      end: [],
      beginFrame: [],
      endFrame: [],
      confidence: [],
      alarm: [],
      text: [],
      objects: [],
      fixed: [],
      subEvents: [],
      subEventIds: [],
    },
    statistics: { frames: 4501, 'candidates tested': 1_234_567 },
  };
  addEvents(data, random, size);
  return {
    data,
    tracks: { quantum: kQuantum, steps: [[kFrame, Math.floor(size.milliseconds / kFrame)]], actors: tracks },
    why: explanations(data, size),
  };
}

function walk(random: Random, first: number, last: number, step: number): CodedTrack {
  const track: CodedTrack = { t: [], x: [], y: [], gap: [] };
  let place: Point = [random.between(2, kHall.width - 2), random.between(2, kHall.height - 2)];
  let goal = place;
  let before = [0, 0, 0];
  for (let time = first; time <= last; time += step) {
    if (random.next() < (0.08 * step) / kStep) {
      goal = [random.between(1, kHall.width - 1), random.between(1, kHall.height - 1)];
    }
    const far = Math.hypot(goal[0] - place[0], goal[1] - place[1]);
    const share = far > 0 ? Math.min(1, (kMetresPerSecond * step) / 1000 / far) : 0;
    place = [place[0] + share * (goal[0] - place[0]), place[1] + share * (goal[1] - place[1])];
    const now = [time, Math.round(place[0] / kQuantum), Math.round(place[1] / kQuantum)];
    if (track.t.length > 0 && random.next() < (0.005 * step) / kStep) {
      track.gap.push(track.t.length);
    }
    track.t.push((now[0] as number) - (before[0] as number));
    track.x.push((now[1] as number) - (before[1] as number));
    track.y.push((now[2] as number) - (before[2] as number));
    before = now;
  }
  return track;
}

function sceneObjects(): SceneObject[] {
  const box = (left: number, low: number, right: number, high: number): Point[] => [
    [left, low],
    [right, low],
    [right, high],
    [left, high],
  ];
  const zone = (id: number, name: string, shape: Point[]): SceneObject => ({
    id,
    name,
    type: 'Zone',
    closed: true,
    shape,
  });
  return [
    zone(0, 'Entrance', box(0, 8, 4, 16)),
    zone(1, 'Waiting area', box(26, 2, 38, 9)),
    zone(2, 'Counter', box(14, 18, 26, 23)),
    { id: 3, name: 'Ticket machine', type: 'Equipment', closed: true, shape: box(9, 1, 10.5, 2.2) },
    { id: 4, name: 'Bench', type: 'Equipment', closed: true, shape: box(30, 4, 35, 4.8) },
    { id: 5, name: 'North wall', type: 'Wall', closed: false, shape: [[0, 24], [40, 24]] },
    { id: 6, name: 'East wall', type: 'Wall', closed: false, shape: [[40, 24], [40, 0], [0, 0]] },
  ]; // prettier-ignore
}

function models(): Model[] {
  const object = (name: string, type: string): { name: string; type: string } => ({ name, type });
  const model = (name: string, kind: number, alarm: number, rest: Partial<Model>): Model => ({
    name,
    kind,
    alarm,
    alarmText: '',
    text: `${name}\n  in(p->Position, z->Vertices)`,
    objects: [object('p', 'Person'), object('z', 'Zone')],
    components: [],
    constraints: texts('in(p->Position, z->Vertices)'),
    ...rest,
  });
  return [
    model('InZone', 0, -1, {}),
    model('Waits', 0, 0, { alarmText: 'Somebody waits' }),
    model('NearBag', 0, -1, { objects: [object('p', 'Person'), object('b', 'Bag')] }),
    model('EntersZone', 1, 0, {}),
    model('LongVisit', 2, 1, {
      alarmText: 'Somebody stays long',
      components: [
        { name: 'c1', model: 0, modelName: 'InZone' },
        { name: 'c2', model: 1, modelName: 'Waits' },
      ],
      constraints: texts('c1 before c2', 'duration(c1->Interval) >= 5'),
    }),
    model('BagLeft', 3, 2, {
      alarmText: 'A bag is left unattended',
      objects: [object('p', 'Person'), object('b', 'Bag')],
      components: [{ name: 'c1', model: 2, modelName: 'NearBag' }],
      constraints: texts('gap(c1->Interval, c1->Interval) > 3'),
    }),
    model('NeverSeen', 3, 3, {
      components: [{ name: 'c1', model: 4, modelName: 'LongVisit' }],
      constraints: texts('duration(c1) > 1000'),
    }),
  ];
}

function addEvents(data: ReportData, random: Random, size: Size): void {
  const { events } = data;
  const lastOf: number[] = data.models.map(() => -1);
  for (let i = 0; i < size.events; i += 1) {
    const kind = random.whole(100);
    const model = kind < 45 ? 0 : kind < 62 ? 1 : kind < 78 ? 2 : kind < 92 ? 3 : kind < 97 ? 4 : 5;
    const begin = Math.floor((size.milliseconds * 0.97 * i) / size.events);
    const actor = data.actors.length > 0 ? 1 + random.whole(data.actors.length) : -1;
    const parts = (data.models[model] as Model).components.map(part => lastOf[part.model] as number);
    const isBag = model === 2 || model === 5;
    const earliest = parts.reduce(
      (least, part) => (part < 0 ? least : Math.min(least, events.begin[part] as number)),
      begin,
    );
    const end = Math.min(size.milliseconds, begin + Math.floor(random.between(40, 24_000)));
    events.id.push(i);
    events.model.push(model);
    events.begin.push(earliest);
    events.end.push(end);
    events.beginFrame.push(Math.floor(earliest / 40));
    events.endFrame.push(Math.floor(end / 40));
    events.confidence.push(Math.round(random.between(0.4, 1) * 100) / 100);
    events.alarm.push((data.models[model] as Model).alarm);
    events.objects.push(isBag ? [actor, Math.min(5, data.actors.length)] : [actor, random.whole(3)]);
    events.fixed.push(isBag ? 0 : 2);
    events.text.push(model);
    events.subEvents.push(parts);
    events.subEventIds.push(parts.map(part => (part < 0 ? -1 : (events.id[part] as number))));
    lastOf[model] = i;
  }
}

function explanations(data: ReportData, { milliseconds, explained }: Size): WhyData {
  const binWidth = Math.max(1000, Math.ceil(milliseconds / 120));
  const count = Math.ceil(milliseconds / binWidth);
  return {
    events: data.events.id.map((_, event) =>
      event < (explained ?? kExplained) ? evidence(data, event) : null,
    ),
    binWidth,
    models: data.models.map(model => ({
      bins: Array.from({ length: count }, (_, bin) => ({
        frames: Math.floor(binWidth / 40),
        candidates: 100 + bin,
        cut_frames: 0,
        constraints: model.constraints.map(({ text }, i) => ({
          first_false: 10 * (i + 1),
          nearest: {
            when: { seconds: (bin * binWidth) / 1000 },
            objects: [{ variable: 'p', id: 1 }],
            false: [{ text, holds: false, seen: '3.2', needed: '>= 5', margin: 1.8 + bin, unit: 's' }],
            rank: [1, 0, 0.3 + bin],
          },
        })),
      })),
    })),
  };
}

function evidence(data: ReportData, event: number): Evidence {
  const { events } = data;
  const model = data.models[events.model[event] as number] as Model;
  const begin = { seconds: (events.begin[event] as number) / 1000 };
  const end = { seconds: (events.end[event] as number) / 1000 };
  return {
    id: events.id[event] as number,
    model: model.name,
    kind: data.kinds[model.kind] as string,
    confidence: events.confidence[event] as number,
    threshold: 0.3,
    begin,
    recognised: begin,
    end,
    objects: model.objects.map(({ name, type }, i) => ({
      variable: name,
      type,
      id: events.objects[event]?.[i] ?? -1,
    })),
    constraints: model.constraints.map(({ text }) => ({
      text,
      holds: true,
      seen: '7.6',
      needed: '<= 40',
      margin: 32.384,
      note: '32.384 to spare',
    })),
    components: (events.subEvents[event] ?? [])
      .map((part, i) => ({ part, variable: model.components[i]?.name ?? '' }))
      .filter(({ part }) => part >= 0)
      .map(({ part, variable }) => ({ variable, event: evidence(data, part) })),
    summary: [
      `${model.name} (event ${events.id[event]}) was recognised from ${begin.seconds} s to ${end.seconds} s.`,
    ],
  };
}

function texts(...all: string[]): Model['constraints'] {
  return all.map(text => ({ text, pure: true }));
}
