import type { Report } from '../report';

// Of the alarm: events without one.
export const kWithoutAlarm = -2;

// What the list shows. -1 and undefined do not limit; an alarm is the least that passes.
export interface Filter {
  words: string;
  model: number;
  kind: number;
  alarm: number;
  actor: number;
  zone: number;
  from: number | undefined;
  to: number | undefined;
  shortest: number | undefined;
  longest: number | undefined;
}

export const kNoFilter: Filter = {
  words: '',
  model: -1,
  kind: -1,
  alarm: -1,
  actor: -1,
  zone: -1,
  from: undefined,
  to: undefined,
  shortest: undefined,
  longest: undefined,
};

// Events that pass, in the order of the report.
export function passing(report: Report, filter: Filter): Int32Array {
  const words = filter.words
    .toLowerCase()
    .split(/\s+/)
    .filter(word => word !== '');
  const found = new Int32Array(report.count);
  let count = 0;
  for (let event = 0; event < report.count; event += 1) {
    if (
      passesModel(report, event, filter) &&
      passesTime(report, event, filter) &&
      passesParticipants(report, event, filter) &&
      passesWords(report, event, words)
    ) {
      found[count] = event;
      count += 1;
    }
  }
  return found.slice(0, count);
}

function passesModel(report: Report, event: number, filter: Filter): boolean {
  return (
    (filter.model < 0 || report.data.events.model[event] === filter.model) &&
    (filter.kind < 0 || report.model(event).kind === filter.kind) &&
    passesAlarm(report.alarm(event), filter.alarm)
  );
}

function passesAlarm(alarm: number, least: number): boolean {
  return least === kWithoutAlarm ? alarm < 0 : least < 0 || alarm >= least;
}

// An event passes that touches the time asked for.
function passesTime(report: Report, event: number, filter: Filter): boolean {
  const duration = report.duration(event);
  return (
    (filter.from === undefined || report.eventEnd(event) >= filter.from) &&
    (filter.to === undefined || report.begin(event) <= filter.to) &&
    (filter.shortest === undefined || duration >= filter.shortest) &&
    (filter.longest === undefined || duration <= filter.longest)
  );
}

function passesParticipants(report: Report, event: number, filter: Filter): boolean {
  if (filter.actor < 0 && filter.zone < 0) {
    return true;
  }
  const participants = report.participants(event);
  const has = (kind: 'actor' | 'scene', index: number): boolean =>
    index < 0 || participants.some(one => one.kind === kind && one.index === index);
  return has('actor', filter.actor) && has('scene', filter.zone);
}

function passesWords(report: Report, event: number, words: string[]): boolean {
  if (words.length === 0) {
    return true;
  }
  const model = report.model(event);
  const text =
    `${model.name} #${report.id(event)} ${report.bindings(event)} ${report.alarmText(event)}`.toLowerCase();
  return words.every(word => text.includes(word));
}
