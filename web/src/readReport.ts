import type {
  Actor,
  Background,
  EventColumns,
  Model,
  Point,
  ReportData,
  Scene,
  SceneObject,
  TracksData,
  WhyData,
} from './data';
import {
  DataProblem,
  fields,
  index,
  indexes,
  list,
  number,
  numbers,
  numbersOrNull,
  optional,
  text,
  texts,
} from './shape';

const kVersion = 1;

// Events and models without an alarm are of a level without a name: here they have none.
function withoutNameless(data: ReportData): ReportData {
  const names = data.alarms.filter(name => name !== '');
  const levelOf = data.alarms.map(name => names.indexOf(name));
  const level = (alarm: number): number => levelOf[alarm] ?? -1;
  return {
    ...data,
    alarms: names,
    alarmNumbers: data.alarmNumbers.filter((_, i) => data.alarms[i] !== ''),
    models: data.models.map(model => ({ ...model, alarm: level(model.alarm) })),
    events: { ...data.events, alarm: data.events.alarm.map(level) },
  };
}

export function readReport(value: unknown): ReportData {
  return withoutNameless(readTables(value));
}

function readTables(value: unknown): ReportData {
  const root = fields(value, 'the report');
  if (root['version'] !== kVersion) {
    throw new DataProblem(
      `the data is of version ${String(root['version'])}, this page reads version ${kVersion}`,
    );
  }
  const types = texts(root['types'], 'types');
  const alarms = texts(root['alarms'], 'alarms');
  const alarmNumbers = numbers(root['alarmNumbers'], 'alarmNumbers');
  sameLength(alarmNumbers, alarms, 'alarmNumbers');
  const eventTexts = texts(root['texts'], 'texts');
  const kinds = texts(root['kinds'], 'kinds');
  const clock = fields(root['clock'], 'clock');
  const models = list(root['models'], 'models');
  return {
    version: kVersion,
    program: optional(root['program'], '', entry => text(entry, 'program')),
    title: text(root['title'], 'title'),
    clock: {
      start: text(clock['start'], 'clock.start'),
      end: number(clock['end'], 'clock.end'),
      frames: number(clock['frames'], 'clock.frames'),
    },
    scene: readScene(root['scene']),
    types,
    actors: list(root['actors'], 'actors').map((entry, i) => readActor(entry, types.length, `actors[${i}]`)),
    alarms,
    alarmNumbers,
    texts: eventTexts,
    kinds,
    models: models.map((entry, i) =>
      readModel(entry, { alarms: alarms.length, kinds: kinds.length, models: models.length }, `models[${i}]`),
    ),
    events: readEvents(root['events'], models.length, alarms.length, eventTexts.length),
    statistics: optional(root['statistics'], {}, entry => fields(entry, 'statistics')),
  };
}

function readScene(value: unknown): Scene {
  const scene = fields(value, 'scene');
  const background = optional<Background | null>(scene['background'], null, readBackground);
  return {
    objects: list(scene['objects'], 'scene.objects').map((entry, i) =>
      readSceneObject(entry, `scene.objects[${i}]`),
    ),
    background,
    down:
      scene['down'] === true || (background !== null && background.placement[1] > background.placement[3]),
    unit: optional(scene['unit'], 'm', entry => text(entry, 'scene.unit')),
  };
}

function readSceneObject(value: unknown, place: string): SceneObject {
  const entry = fields(value, place);
  return {
    id: optional(entry['id'], -1, id => number(id, `${place}.id`)),
    name: text(entry['name'], `${place}.name`),
    type: text(entry['type'], `${place}.type`),
    closed: entry['closed'] === true,
    shape: list(entry['shape'], `${place}.shape`).map((point, i) => readPoint(point, `${place}.shape[${i}]`)),
  };
}

function readPoint(value: unknown, place: string): Point {
  const [x, y] = numbers(value, place);
  if (x === undefined || y === undefined) {
    throw new DataProblem(`${place} is no point`);
  }
  return [x, y];
}

function readBackground(value: unknown): Background {
  const entry = fields(value, 'scene.background');
  const image = text(entry['image'], 'scene.background.image');
  const placement = numbers(entry['placement'], 'scene.background.placement');
  if (!image.startsWith('data:image/') || placement.length !== 4) {
    throw new DataProblem('scene.background is no picture with a place');
  }
  return { image, placement: placement as Background['placement'] };
}

function readActor(value: unknown, types: number, place: string): Actor {
  const entry = fields(value, place);
  return {
    id: number(entry['id'], `${place}.id`),
    type: index(entry['type'], types, `${place}.type`),
    first: number(entry['first'], `${place}.first`),
    last: number(entry['last'], `${place}.last`),
  };
}

function readModel(
  value: unknown,
  sizes: { alarms: number; kinds: number; models: number },
  place: string,
): Model {
  const entry = fields(value, place);
  return {
    name: text(entry['name'], `${place}.name`),
    kind: index(entry['kind'], sizes.kinds, `${place}.kind`),
    alarm: optional(entry['alarm'], -1, alarm => index(alarm, sizes.alarms, `${place}.alarm`)),
    alarmText: optional(entry['alarmText'], '', words => text(words, `${place}.alarmText`)),
    text: optional(entry['text'], '', words => text(words, `${place}.text`)),
    objects: list(entry['objects'], `${place}.objects`).map((object, i) => {
      const part = fields(object, `${place}.objects[${i}]`);
      return {
        name: text(part['name'], `${place}.objects[${i}].name`),
        type: text(part['type'], `${place}.objects[${i}].type`),
      };
    }),
    components: list(entry['components'], `${place}.components`).map((component, i) => {
      const part = fields(component, `${place}.components[${i}]`);
      return {
        name: text(part['name'], `${place}.components[${i}].name`),
        model: index(part['model'], sizes.models, `${place}.components[${i}].model`),
        modelName: text(part['modelName'], `${place}.components[${i}].modelName`),
      };
    }),
    constraints: optional(entry['constraints'], [], constraints =>
      list(constraints, `${place}.constraints`).map((constraint, i) => {
        const words = `${place}.constraints[${i}]`;
        const part = fields(constraint, words);
        return { text: text(part['text'], `${words}.text`), pure: part['pure'] !== false };
      }),
    ),
  };
}

function readEvents(value: unknown, models: number, alarms: number, eventTexts: number): EventColumns {
  const entry = fields(value, 'events');
  const ids = numbers(entry['id'], 'events.id');
  const column = <Value>(name: string, read: (value: unknown, place: string) => Value[]): Value[] => {
    const values = read(entry[name], `events.${name}`);
    sameLength(values, ids, `events.${name}`);
    return values;
  };
  const lists = (name: string): number[][] => {
    const values = list(entry[name], `events.${name}`);
    sameLength(values, ids, `events.${name}`);
    return values.map(part => numbers(part, `a list of events.${name}`));
  };
  const events: EventColumns = {
    id: ids,
    model: column('model', numbers),
    begin: column('begin', numbers),
    end: column('end', numbers),
    beginFrame: column('beginFrame', numbers),
    endFrame: column('endFrame', numbers),
    confidence: column('confidence', numbersOrNull),
    alarm: column('alarm', numbers),
    text: column('text', numbers),
    objects: lists('objects'),
    fixed: column('fixed', numbers),
    subEvents: lists('subEvents'),
    subEventIds: lists('subEventIds'),
  };
  indexes(events.model, models, 'events.model');
  indexes(events.alarm, alarms, 'events.alarm');
  indexes(events.text, eventTexts, 'events.text');
  indexes(events.subEvents.flat(), ids.length, 'events.subEvents');
  const nameless = events.model.indexOf(-1);
  if (nameless >= 0) {
    throw new DataProblem(`events.model[${nameless}] names no model`);
  }
  return events;
}

function sameLength(values: unknown[], others: unknown[], place: string): void {
  if (values.length !== others.length) {
    throw new DataProblem(`${place} has ${values.length} entries, not ${others.length}`);
  }
}

export function readTracks(value: unknown, actors: number): TracksData {
  const root = fields(value, 'the tracks');
  const tracks = list(root['actors'], 'tracks.actors');
  if (tracks.length !== actors) {
    throw new DataProblem(`there are tracks of ${tracks.length} actors, not of ${actors}`);
  }
  return {
    quantum: number(root['quantum'], 'tracks.quantum'),
    steps: readSteps(root['steps']),
    actors: tracks.map((entry, i) => {
      const place = `tracks.actors[${i}]`;
      const track = fields(entry, place);
      const t = numbers(track['t'], `${place}.t`);
      const x = numbers(track['x'], `${place}.x`);
      const y = numbers(track['y'], `${place}.y`);
      if (x.length !== t.length || y.length !== t.length) {
        throw new DataProblem(`${place} has columns of different length`);
      }
      return { t, x, y, gap: optional(track['gap'], [], gap => numbers(gap, `${place}.gap`)) };
    }),
  };
}

// Frames of months at most.
const kMostFrames = 100_000_000;

function readSteps(value: unknown): [number, number][] {
  const steps = list(value, 'tracks.steps').map((entry, i) => readPoint(entry, `tracks.steps[${i}]`));
  const frames = steps.reduce(
    (sum, [, times]) => sum + (Number.isInteger(times) && times > 0 ? times : Infinity),
    0,
  );
  if (frames > kMostFrames) {
    throw new DataProblem('tracks.steps are of no frames that can be');
  }
  return steps;
}

// Explanations are read as they come: what one of them lacks is not shown.
export function readWhy(value: unknown, events: number, models: number): WhyData {
  const root = fields(value, 'the explanations');
  const explained = list(root['events'], 'explanations.events');
  const bins = list(root['models'], 'explanations.models');
  if (explained.length !== events || bins.length !== models) {
    throw new DataProblem('the explanations are not those of these events and models');
  }
  bins.forEach((model, i) =>
    list(fields(model, `explanations.models[${i}]`)['bins'], `explanations.models[${i}].bins`),
  );
  const width = number(root['binWidth'], 'explanations.binWidth');
  if (width <= 0) {
    throw new DataProblem('explanations.binWidth is not above 0');
  }
  const lookBack = optional(root['lookBack'], 0, length => number(length, 'explanations.lookBack'));
  return { events: explained, binWidth: width, lookBack, models: bins } as WhyData;
}
