import type { Report } from '../report';

// One line of the timeline: the events of a model, or those of an actor. Events that overlap get rows of their own
// when the lane is open.
export interface Lane {
  key: string;
  label: string;
  events: Int32Array;
  rowOf: Uint8Array;
  rows: number;
  longest: number;
  actor: number;
}

// Lanes of models without events stand behind a line of their own, which is folded to begin with.
export interface LaneGroup {
  key: string;
  label: string;
  lanes: Lane[];
  empty: Lane[];
}

const kMostRows = 12;
const kManyActors = 40;

// Composites come first, those made of others above their components; actors last.
export function buildGroups(report: Report): LaneGroup[] {
  const eventsOf: number[][] = report.data.models.map(() => []);
  report.data.events.model.forEach((model, event) => (eventsOf[model] as number[]).push(event));
  const height = heights(report);
  const order = report.data.models
    .map((_, model) => model)
    .sort((a, b) => (height[b] as number) - (height[a] as number) || a - b);
  const groups = kindOrder(report, height).map(({ kind, name }) => {
    const lanes = order
      .filter(model => report.data.models[model]?.kind === kind)
      .map(model =>
        lane(report, `model ${model}`, report.data.models[model]?.name ?? '', eventsOf[model] ?? [], -1),
      );
    return {
      key: `kind ${kind}`,
      label: name,
      lanes: lanes.filter(({ events }) => events.length > 0),
      empty: lanes.filter(({ events }) => events.length === 0),
    };
  });
  groups.push({
    key: 'actors',
    label: 'Actors',
    lanes: report.data.actors.map((_, actor) =>
      lane(report, `actor ${actor}`, report.actorName(actor), report.eventsOfActor(actor), actor),
    ),
    empty: [],
  });
  return groups.filter(group => group.lanes.length + group.empty.length > 0);
}

// Groups that are folded to begin with.
export function foldedAtFirst(groups: LaneGroup[]): Set<string> {
  return new Set(
    groups
      .filter(group => group.key === 'actors' && group.lanes.length > kManyActors)
      .map(group => group.key),
  );
}

// Kinds whose models stand higher come first: what an event is made of stands below it, of whatever kinds both are, unless
// two kinds are made of each other.
function kindOrder(report: Report, height: number[]): { kind: number; name: string }[] {
  const { kinds, models } = report.data;
  const most = kinds.map((_, kind) =>
    models.reduce((top, model, i) => (model.kind === kind ? Math.max(top, height[i] as number) : top), 0),
  );
  const rank = (name: string): number =>
    (name.startsWith('Composite') ? 0 : 2) + (name.endsWith('Event') ? 0 : 1);
  return kinds
    .map((name, kind) => ({ kind, name: words(name) }))
    .sort(
      (a, b) =>
        (most[b.kind] as number) - (most[a.kind] as number) ||
        rank(kinds[a.kind] ?? '') - rank(kinds[b.kind] ?? '') ||
        a.kind - b.kind,
    );
}

// CompositeEvent: Composite events
export function words(kind: string): string {
  const split = kind.replace(/([a-z])([A-Z])/g, (_, a: string, b: string) => `${a} ${b.toLowerCase()}`);
  return split === '' || split.endsWith('s') ? split : `${split}s`;
}

// How many levels of components stand below a model. Circles, which the program refuses, end at a fixed depth.
function heights(report: Report): number[] {
  const { models } = report.data;
  const known: number[] = models.map(() => -1);
  const measure = (model: number, depth: number): number => {
    if (depth > models.length || model < 0) {
      return 0;
    }
    if ((known[model] as number) < 0) {
      known[model] = 0;
      const below = (models[model]?.components ?? []).map(part => 1 + measure(part.model, depth + 1));
      known[model] = Math.max(0, ...below);
    }
    return known[model] as number;
  };
  return models.map((_, model) => measure(model, 0));
}

function lane(report: Report, key: string, label: string, events: number[], actor: number): Lane {
  const sorted = Int32Array.from(events).sort((a, b) => report.begin(a) - report.begin(b) || a - b);
  const rowOf = new Uint8Array(sorted.length);
  const ends: number[] = [];
  let longest = 0;
  sorted.forEach((event, i) => {
    const begin = report.begin(event);
    let row = ends.findIndex(end => end < begin);
    if (row < 0) {
      row = Math.min(ends.length, kMostRows - 1);
    }
    ends[row] = Math.max(ends[row] ?? 0, report.eventEnd(event));
    rowOf[i] = row;
    longest = Math.max(longest, report.duration(event));
  });
  return { key, label, events: sorted, rowOf, rows: Math.max(1, ends.length), longest, actor };
}

// Positions in the lane of the events that may touch a span of time.
export function laneRange(report: Report, lane: Lane, from: number, to: number): [number, number] {
  return [firstBeginningAt(report, lane, from - lane.longest), firstBeginningAt(report, lane, to + 1)];
}

function firstBeginningAt(report: Report, lane: Lane, time: number): number {
  let low = 0;
  let high = lane.events.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (report.begin(lane.events[middle] as number) < time) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}
