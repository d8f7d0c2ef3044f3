import type { Report } from '../report';

// One event as the program's own outputs have it.
interface ExportedEvent {
  id: number;
  name: string;
  kind: string;
  alarm_level: string;
  alarm: number;
  text: string;
  confidence: number | null;
  begin: string;
  begin_frame: number;
  end: string;
  end_frame: number;
  duration: number;
  objects: { variable: string; type: string; id: number; name: string }[];
  sub_events: { variable: string; id: number; name: string }[];
}

const kHeader =
  'id,name,kind,alarm_level,alarm,text,confidence,begin,begin_frame,end,end_frame,duration,objects,sub_events';
const kFormula = /^[=+\-@\t\r]/;

export function toJson(report: Report, events: Int32Array): string {
  return `${JSON.stringify(
    Array.from(events, event => exported(report, event)),
    null,
    1,
  )}\n`;
}

export function toCsv(report: Report, events: Int32Array): string {
  const lines = [kHeader];
  for (const event of events) {
    lines.push(csvLine(exported(report, event)));
  }
  return `${lines.join('\r\n')}\r\n`;
}

function exported(report: Report, event: number): ExportedEvent {
  const model = report.model(event);
  const level = report.alarm(event);
  return {
    id: report.id(event),
    name: model.name,
    kind: report.kindName(model),
    alarm_level: report.alarmName(level),
    alarm: report.data.alarmNumbers[level] ?? 0,
    text: report.alarmText(event),
    confidence: report.data.events.confidence[event] ?? null,
    begin: report.clock.full(report.begin(event)),
    begin_frame: report.data.events.beginFrame[event] ?? 0,
    end: report.clock.full(report.eventEnd(event)),
    end_frame: report.data.events.endFrame[event] ?? 0,
    duration: report.duration(event) / 1000,
    objects: exportedObjects(report, event),
    sub_events: exportedSubEvents(report, event),
  };
}

function exportedObjects(report: Report, event: number): ExportedEvent['objects'] {
  const participants = report.participants(event);
  const ids = report.data.events.objects[event] ?? [];
  const objects = report.model(event).objects.map(({ name: variable, type }, position) => {
    const participant = participants[position] ?? { kind: 'unbound' };
    return {
      variable,
      type: report.participantType(participant) ?? type,
      id: ids[position] ?? -1,
      name: participant.kind === 'scene' ? report.participantName(participant) : '',
    };
  });
  return objects.sort(byVariable);
}

// Also those that are no event of the report.
function exportedSubEvents(report: Report, event: number): ExportedEvent['sub_events'] {
  const { components } = report.model(event);
  const ids = report.data.events.subEventIds[event] ?? [];
  return ids
    .map((id, position) => ({
      variable: components[position]?.name ?? '',
      id,
      name: components[position]?.modelName ?? '',
    }))
    .filter(({ id }) => id >= 0)
    .sort(byVariable);
}

// As the program orders them.
function byVariable(a: { variable: string }, b: { variable: string }): number {
  return a.variable < b.variable ? -1 : Number(a.variable > b.variable);
}

function csvLine(event: ExportedEvent): string {
  const objects = event.objects.map(
    ({ variable, type, id, name }) => `${variable}=${type} ${id}${name === '' ? '' : ` ${name}`}`,
  );
  const parts = event.sub_events.map(({ variable, id, name }) => `${variable}=${id} ${name}`);
  return [
    String(event.id),
    csvText(event.name),
    csvText(event.kind),
    csvText(event.alarm_level),
    String(event.alarm),
    csvText(event.text),
    event.confidence === null ? 'nan' : String(event.confidence),
    event.begin,
    String(event.begin_frame),
    event.end,
    String(event.end_frame),
    String(event.duration),
    csvText(objects.join(';')),
    csvText(parts.join(';')),
  ].join(',');
}

// Text out of files. A spreadsheet would take some of it for a formula: an apostrophe before it says that it is none.
export function csvText(text: string): string {
  const guarded = kFormula.test(text) ? `'${text}` : text;
  return /[",\r\n]/.test(guarded) ? `"${guarded.replaceAll('"', '""')}"` : guarded;
}
