// What the program writes into a report, as docs/report.md describes it. All times are milliseconds since the
// clock's start, lengths are in the unit of the scene.

export type Point = [number, number];

export interface Clock {
  start: string;
  end: number;
  frames: number;
}

export interface SceneObject {
  id: number;
  name: string;
  type: string;
  closed: boolean;
  shape: Point[];
}

export interface Background {
  image: string;
  placement: [number, number, number, number];
}

export interface Scene {
  objects: SceneObject[];
  background: Background | null;
  down: boolean;
  unit: string;
}

export interface Actor {
  id: number;
  type: number;
  first: number;
  last: number;
}

export interface ModelObject {
  name: string;
  type: string;
}

// Its model is -1 where the report has none of that name.
export interface ModelComponent {
  name: string;
  model: number;
  modelName: string;
}

export interface Model {
  name: string;
  kind: number;
  alarm: number;
  alarmText: string;
  text: string;
  objects: ModelObject[];
  components: ModelComponent[];
  constraints: { text: string; pure: boolean }[];
}

// Columns of the same length; `text` names entries of the report's texts. A confidence that is no number is null. An object is -1 where nothing is bound, a sub-event where it is no event of the report.
// Bit k of `fixed` is set where object k belongs to the scene: people and things of the scene are numbered apart.
export interface EventColumns {
  id: number[];
  model: number[];
  begin: number[];
  end: number[];
  beginFrame: number[];
  endFrame: number[];
  confidence: (number | null)[];
  alarm: number[];
  text: number[];
  objects: number[][];
  fixed: number[];
  subEvents: number[][];
  subEventIds: number[][];
}

export interface ReportData {
  version: 1;
  program: string;
  title: string;
  clock: Clock;
  scene: Scene;
  types: string[];
  actors: Actor[];
  alarms: string[];
  // Of each level, the number that the program's outputs have.
  alarmNumbers: number[];
  texts: string[];
  kinds: string[];
  models: Model[];
  events: EventColumns;
  statistics: Record<string, unknown>;
}

// Key points of one actor, delta coded; `gap` names those before which the actor was not seen.
export interface CodedTrack {
  t: number[];
  x: number[];
  y: number[];
  gap: number[];
}

export interface TracksData {
  quantum: number;
  // From each frame to the next: milliseconds, and how many times.
  steps: [number, number][];
  actors: CodedTrack[];
}

export interface Moment {
  frame?: number;
  time?: string;
  seconds: number;
}

export interface NamedObject {
  variable: string;
  type?: string;
  id: number;
  name?: string;
}

export interface Finding {
  text: string;
  holds: boolean;
  seen?: string;
  needed?: string;
  margin?: number | null;
  unit?: string;
  note?: string;
}

export interface EvidencePart {
  variable: string;
  event: Evidence;
}

export interface Evidence {
  id: number;
  model: string;
  kind: string;
  confidence: number | null;
  threshold: number | null;
  begin: Moment;
  recognised: Moment;
  end: Moment;
  objects: NamedObject[];
  constraints: Finding[];
  components?: EvidencePart[];
  summary?: string[];
}

export interface NearMiss {
  when: Moment;
  objects: NamedObject[];
  false: Finding[];
  hindsight?: boolean;
  // False constraints, of these without a margin, sum of the shares missed: smaller is nearer.
  rank?: (number | null)[];
}

export interface BinConstraint {
  first_false: number;
  nearest?: NearMiss;
}

// How often all constraints held and only the confidence was too low.
export interface ConfidenceMiss {
  times: number;
  threshold: number | null;
  // The greatest, who and when.
  confidence: number | null;
  when?: Moment;
  objects?: NamedObject[];
}

// What `explain --model` counts in one part of the time.
export interface WhyNotBin {
  frames?: number;
  candidates: number;
  cut_frames?: number;
  constraints?: BinConstraint[];
  nearest?: NearMiss;
  confidence?: ConfidenceMiss;
  unseen_types?: string[];
}

export interface WhyNotModel {
  bins: (WhyNotBin | null)[];
}

export interface WhyData {
  events: (Evidence | null)[];
  binWidth: number;
  // For how long recognition looks back at events.
  lookBack?: number;
  models: WhyNotModel[];
}
