import type { Report } from '../report';

export type Column =
  | 'begin'
  | 'duration'
  | 'model'
  | 'kind'
  | 'actor'
  | 'zone'
  | 'objects'
  | 'alarm'
  | 'confidence';

// All that events can be sorted by, with the words for it.
export const kColumnNames: [Column, string][] = [
  ['begin', 'Begin'],
  ['duration', 'Duration'],
  ['model', 'Model'],
  ['kind', 'Kind'],
  ['actor', 'Actor'],
  ['zone', 'Zone or thing'],
  ['objects', 'Who'],
  ['alarm', 'Alarm'],
  ['confidence', 'Confidence'],
];

export interface Order {
  column: Column;
  isDown: boolean;
}

const kCollator = new Intl.Collator('en', { numeric: true });

// Events that are alike in the column stay in the order of time.
export function sorted(report: Report, events: Int32Array, order: Order): Int32Array {
  const keys = keysOf(report, events, order.column);
  const positions = Uint32Array.from(events, (_, i) => i);
  const sign = order.isDown ? -1 : 1;
  positions.sort((a, b) => {
    const difference = (keys[a] as number) - (keys[b] as number);
    return difference !== 0 ? sign * difference : byTime(report, events, a, b);
  });
  return Int32Array.from(positions, position => events[position] as number);
}

function byTime(report: Report, events: Int32Array, a: number, b: number): number {
  const first = events[a] as number;
  const second = events[b] as number;
  return report.begin(first) - report.begin(second) || first - second;
}

function keysOf(report: Report, events: Int32Array, column: Column): Float64Array {
  switch (column) {
    case 'begin':
      return Float64Array.from(events, event => report.begin(event));
    case 'duration':
      return Float64Array.from(events, event => report.duration(event));
    case 'alarm':
      return Float64Array.from(events, event => report.alarm(event));
    case 'confidence':
      return Float64Array.from(events, event => report.data.events.confidence[event] ?? -1);
    case 'model':
      return ranked(Array.from(events, event => report.model(event).name));
    case 'kind':
      return ranked(Array.from(events, event => report.kindName(report.model(event))));
    case 'actor':
      return ranked(Array.from(events, event => namesOf(report, event, 'actor')));
    case 'zone':
      return ranked(Array.from(events, event => namesOf(report, event, 'scene')));
    case 'objects':
      return ranked(Array.from(events, event => report.bindings(event)));
  }
}

// Those of one sort that take part. Events without any stand first.
function namesOf(report: Report, event: number, kind: 'actor' | 'scene'): string {
  return report
    .participants(event)
    .filter(participant => participant.kind === kind)
    .map(participant => report.participantName(participant))
    .join(' ');
}

// Each text is compared with the different ones only once.
function ranked(texts: string[]): Float64Array {
  const rank = new Map([...new Set(texts)].sort(kCollator.compare).map((text, i) => [text, i]));
  return Float64Array.from(texts, text => rank.get(text) ?? 0);
}
