import type { Clock, CodedTrack, Point, TracksData } from './data';

const kMostEvenFrames = 10_000_000;

// Where one actor was: key points, and whether the actor was unseen before each.
export interface Track {
  t: Float64Array;
  x: Float64Array;
  y: Float64Array;
  afterGap: Uint8Array;
}

// The time of each frame.
export function frameTimes({ steps }: TracksData): Float64Array {
  const times = new Float64Array(1 + steps.reduce((sum, [, count]) => sum + count, 0));
  let frame = 0;
  for (const [step, count] of steps) {
    for (let i = 0; i < count; i += 1) {
      times[frame + 1] = (times[frame] as number) + step;
      frame += 1;
    }
  }
  return times;
}

// Frames of which nothing but their number is known.
export function evenFrames({ end, frames }: Clock): Float64Array {
  const count = Math.max(1, Math.min(frames, kMostEvenFrames));
  return Float64Array.from({ length: count }, (_, i) => (i * end) / Math.max(1, count - 1));
}

// The time of the first frame after a time, or with -1 of the last before it; where there is none, the first or the last.
export function nextFrame(times: Float64Array, time: number, direction: 1 | -1): number {
  let low = 0;
  let high = times.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    const at = times[middle] as number;
    if (direction > 0 ? at <= time : at < time) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  const frame = direction > 0 ? low : low - 1;
  return times[Math.max(0, Math.min(frame, times.length - 1))] ?? 0;
}

export function decodeTracks(data: TracksData): Track[] {
  return data.actors.map(track => decodeTrack(track, data.quantum));
}

function decodeTrack(coded: CodedTrack, quantum: number): Track {
  const afterGap = new Uint8Array(coded.t.length);
  for (const index of coded.gap) {
    afterGap[index] = 1;
  }
  return { t: summed(coded.t, 1), x: summed(coded.x, quantum), y: summed(coded.y, quantum), afterGap };
}

function summed(deltas: number[], unit: number): Float64Array {
  const values = new Float64Array(deltas.length);
  let sum = 0;
  for (let i = 0; i < deltas.length; i += 1) {
    sum += deltas[i] as number;
    values[i] = sum * unit;
  }
  return values;
}

// Index of the last key point that is not later, or -1.
export function keyPointBefore(track: Track, time: number): number {
  let low = 0;
  let high = track.t.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if ((track.t[middle] as number) <= time) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low - 1;
}

// The place at a time; nothing while the actor was not seen.
export function placeAt(track: Track, time: number): Point | undefined {
  const before = keyPointBefore(track, time);
  if (before < 0) {
    return undefined;
  }
  const t0 = track.t[before] as number;
  const here: Point = [track.x[before] as number, track.y[before] as number];
  if (t0 === time) {
    return here;
  }
  const after = before + 1;
  if (after >= track.t.length || track.afterGap[after]) {
    return undefined;
  }
  const share = (time - t0) / ((track.t[after] as number) - t0);
  return [
    here[0] + share * ((track.x[after] as number) - here[0]),
    here[1] + share * ((track.y[after] as number) - here[1]),
  ];
}

// Lines along which the actor went between two times; a new one after each gap.
export function trail(track: Track, from: number, to: number): Point[][] {
  const lines: Point[][] = [];
  let line: Point[] = [];
  const first = keyPointBefore(track, from) + 1;
  const start = placeAt(track, from);
  if (start) {
    line.push(start);
  }
  for (let i = first; i < track.t.length && (track.t[i] as number) <= to; i += 1) {
    if (track.afterGap[i] && line.length > 0) {
      lines.push(line);
      line = [];
    }
    line.push([track.x[i] as number, track.y[i] as number]);
  }
  const end = placeAt(track, to);
  if (end && line.length > 0) {
    line.push(end);
  }
  if (line.length > 0) {
    lines.push(line);
  }
  return lines;
}

// Times between which the actor was seen without a break.
export function sightings(track: Track): [number, number][] {
  return sightingsOf(track).map(([first, last]) => [track.t[first] as number, track.t[last] as number]);
}

// The first and the last key point of each sighting.
export function sightingsOf(track: Track): [number, number][] {
  const spans: [number, number][] = [];
  let begin = 0;
  for (let i = 1; i <= track.t.length; i += 1) {
    if (i === track.t.length || track.afterGap[i]) {
      spans.push([begin, i - 1]);
      begin = i;
    }
  }
  return track.t.length > 0 ? spans : [];
}
