import type { Report } from '../report';
import { tickStep } from '../time';
import { sightings } from '../tracks';

export interface ModelCount {
  model: number;
  count: number;
  perMinute: number;
  total: number;
}

export interface Series {
  times: number[];
  values: number[];
}

const kMinute = 60_000;

// How many events each model has, how many a minute, and how long they last in all.
export function countsOfModels(report: Report): ModelCount[] {
  const counts = report.data.models.map((_, model) => ({ model, count: 0, perMinute: 0, total: 0 }));
  for (let event = 0; event < report.count; event += 1) {
    const entry = counts[report.data.events.model[event] as number] as ModelCount;
    entry.count += 1;
    entry.total += report.duration(event);
  }
  for (const entry of counts) {
    entry.perMinute = entry.count / (report.end / kMinute);
  }
  return counts;
}

// Bins of a minute; of seconds where the recording has few minutes, of more where it has hundreds.
export function binWidth(end: number): number {
  if (end > 240 * kMinute) {
    return Math.ceil(end / 240 / kMinute) * kMinute;
  }
  return end >= 10 * kMinute ? kMinute : Math.max(1000, tickStep(end, 30));
}

// Events that begin in each bin; of one model, or of all with -1.
export function eventsPerBin(report: Report, model: number, width: number): Series {
  const series = emptyBins(report.end, width);
  for (let event = 0; event < report.count; event += 1) {
    if (model < 0 || report.data.events.model[event] === model) {
      // An event may have begun before the first frame.
      const bin = Math.max(0, Math.min(series.values.length - 1, Math.floor(report.begin(event) / width)));
      series.values[bin] = (series.values[bin] as number) + 1;
    }
  }
  return series;
}

function emptyBins(end: number, width: number): Series {
  const count = Math.max(1, Math.ceil(end / width));
  return {
    times: Array.from({ length: count }, (_, i) => (i + 0.5) * width),
    values: Array.from({ length: count }, () => 0),
  };
}

// Actors that are in view, or where their ways are not known, between their first and last frame; one point where the
// number changes.
export function actorsOverTime(report: Report): Series {
  const changes = report.data.actors.flatMap(({ first, last }, actor): [number, number][] => {
    const track = report.tracks[actor];
    const seen = track ? sightings(track) : [];
    return (seen.length > 0 ? seen : [[first, last] as const]).flatMap(([from, to]): [number, number][] => [
      [from, 1],
      [to, -1],
    ]);
  });
  changes.sort((a, b) => a[0] - b[0] || b[1] - a[1]);
  const series: Series = { times: [0], values: [0] };
  let count = 0;
  for (const [time, change] of changes) {
    count += change;
    const end = series.times.length - 1;
    if (series.times[end] === time && change > 0) {
      series.values[end] = count;
    } else if (series.times[end] === time) {
      series.values[end] = Math.min(series.values[end] as number, count);
    } else {
      series.times.push(time);
      series.values.push(count);
    }
  }
  series.times.push(report.end);
  series.values.push(count);
  return series;
}

export interface Histogram {
  edges: number[];
  counts: number[];
}

const kMostBars = 20;

export function histogram(lengths: number[]): Histogram {
  let longest = 0;
  for (const length of lengths) {
    longest = Math.max(longest, length);
  }
  const width = Math.max(100, tickStep(longest, kMostBars));
  const bars = Math.max(1, Math.floor(longest / width) + 1);
  const counts = Array.from({ length: bars }, () => 0);
  for (const length of lengths) {
    const bar = Math.floor(length / width);
    counts[bar] = (counts[bar] as number) + 1;
  }
  return { edges: Array.from({ length: bars + 1 }, (_, i) => i * width), counts };
}

export function median(values: number[]): number {
  const ordered = [...values].sort((a, b) => a - b);
  const middle = ordered.length >> 1;
  const upper = ordered[middle] ?? 0;
  return ordered.length % 2 === 1 ? upper : ((ordered[middle - 1] ?? 0) + upper) / 2;
}
