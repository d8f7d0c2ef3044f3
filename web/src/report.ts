import type { Actor, Model, ReportData, SceneObject } from './data';
import { ClockText } from './time';
import type { Track } from './tracks';

// Who stands at one place of an event's model.
export type Participant =
  | { kind: 'actor'; index: number }
  | { kind: 'scene'; index: number }
  | { kind: 'unknown'; id: number }
  | { kind: 'unbound' };

// All that the views ask of the data. Made once; never changed.
export class Report {
  readonly clock: ClockText;
  readonly count: number;
  readonly end: number;
  private readonly actorOfId = new Map<number, number>();
  private readonly sceneOfId = new Map<number, number>();
  private parents: number[][] | undefined;
  private eventsOfActors: number[][] | undefined;

  constructor(
    readonly data: ReportData,
    readonly tracks: Track[],
    // When each frame came.
    readonly frames: Float64Array = new Float64Array(1),
  ) {
    this.clock = new ClockText(data.clock.start);
    this.count = data.events.id.length;
    this.end = Math.max(1, data.clock.end, ...latest(data.events.end));
    data.actors.forEach((actor, index) => this.actorOfId.set(actor.id, index));
    data.scene.objects.forEach((object, index) => this.sceneOfId.set(object.id, index));
  }

  model(event: number): Model {
    return this.data.models[this.data.events.model[event] as number] as Model;
  }

  id(event: number): number {
    return this.data.events.id[event] as number;
  }

  begin(event: number): number {
    return this.data.events.begin[event] as number;
  }

  eventEnd(event: number): number {
    return this.data.events.end[event] as number;
  }

  duration(event: number): number {
    return this.eventEnd(event) - this.begin(event);
  }

  alarm(event: number): number {
    return this.data.events.alarm[event] as number;
  }

  alarmName(level: number): string {
    return this.data.alarms[level] ?? '';
  }

  // The alarm text that the event came with.
  alarmText(event: number): string {
    return this.data.texts[this.data.events.text[event] as number] ?? '';
  }

  kindName(model: Model): string {
    return this.data.kinds[model.kind] ?? '';
  }

  subEvents(event: number): number[] {
    return this.data.events.subEvents[event] ?? [];
  }

  // In the order of the model's objects.
  participants(event: number): Participant[] {
    const fixed = this.data.events.fixed[event] ?? 0;
    return (this.data.events.objects[event] ?? []).map((id, position) =>
      this.participant(id, isBitSet(fixed, position)),
    );
  }

  private participant(id: number, isFixed: boolean): Participant {
    if (id < 0) {
      return { kind: 'unbound' };
    }
    const index = (isFixed ? this.sceneOfId : this.actorOfId).get(id);
    return index === undefined ? { kind: 'unknown', id } : { kind: isFixed ? 'scene' : 'actor', index };
  }

  participantName(participant: Participant): string {
    switch (participant.kind) {
      case 'actor':
        return String((this.data.actors[participant.index] as Actor).id);
      case 'scene':
        return (this.data.scene.objects[participant.index] as SceneObject).name;
      case 'unknown':
        return String(participant.id);
      case 'unbound':
        return '–';
    }
  }

  // As the program's outputs call it; nothing where it is not known.
  participantType(participant: Participant): string | undefined {
    switch (participant.kind) {
      case 'actor':
        return agentType(this.data.types[(this.data.actors[participant.index] as Actor).type] ?? '');
      case 'scene':
        return (this.data.scene.objects[participant.index] as SceneObject).type;
      default:
        return undefined;
    }
  }

  // p=1 b=3 z=Floor
  bindings(event: number): string {
    const declared = this.model(event).objects;
    return this.participants(event)
      .map(
        (participant, position) =>
          `${declared[position]?.name ?? position}=${this.participantName(participant)}`,
      )
      .join(' ');
  }

  actorName(actor: number): string {
    const { id, type } = this.data.actors[actor] as Actor;
    return `${this.data.types[type] ?? 'Actor'} ${id}`;
  }

  // Events of which this one is a part.
  partOf(event: number): number[] {
    if (!this.parents) {
      this.parents = Array.from({ length: this.count }, () => []);
      for (let whole = 0; whole < this.count; whole += 1) {
        for (const part of this.subEvents(whole)) {
          if (part >= 0) {
            (this.parents[part] as number[]).push(whole);
          }
        }
      }
    }
    return this.parents[event] ?? [];
  }

  // Events in which an actor takes part, in the order of the report.
  eventsOfActor(actor: number): number[] {
    if (!this.eventsOfActors) {
      this.eventsOfActors = this.data.actors.map(() => []);
      for (let event = 0; event < this.count; event += 1) {
        for (const participant of this.participants(event)) {
          if (participant.kind === 'actor') {
            const events = this.eventsOfActors[participant.index] as number[];
            if (events[events.length - 1] !== event) {
              events.push(event);
            }
          }
        }
      }
    }
    return this.eventsOfActors[actor] ?? [];
  }
}

// Recognition has types of its own for what tracks call otherwise.
function agentType(type: string): string {
  if (type === 'PERSON') {
    return 'Person';
  }
  return type === 'GROUP' ? 'Group' : 'Mobile';
}

// Of a number that may have more than 32 bits.
function isBitSet(bits: number, position: number): boolean {
  return Math.floor(bits / 2 ** position) % 2 === 1;
}

function latest(times: number[]): number[] {
  let most = 0;
  for (const time of times) {
    most = Math.max(most, time);
  }
  return [most];
}
