import type { ConfidenceMiss, NearMiss, WhyNotBin } from '../data';

export interface ConstraintSum {
  text: string;
  pure: boolean;
  firstFalse: number;
  nearest: NearMiss | undefined;
}

export interface WhyNotSum {
  frames: number;
  candidates: number;
  cutFrames: number;
  constraints: ConstraintSum[];
  nearest: NearMiss | undefined;
  confidence: ConfidenceMiss | undefined;
  // Types of which nobody was seen in any of the bins.
  unseenTypes: string[];
}

type Bins = (WhyNotBin | null)[];

// Bins whose middle lies in a span of time; at least the one in which the span's middle lies.
export function binsIn(from: number, to: number, binWidth: number, count: number): [number, number] {
  const clamp = (bin: number): number => Math.max(0, Math.min(bin, count - 1));
  const first = Math.max(0, Math.ceil(from / binWidth - 0.5));
  const last = clamp(Math.floor(to / binWidth - 0.5));
  if (first <= last) {
    return [first, last + 1];
  }
  const middle = clamp(Math.floor((from + to) / 2 / binWidth));
  return [middle, middle + 1];
}

// Adds up the bins from first to before last: counts are sums, near misses the nearest of them. Bins without a frame say
// nothing.
export function summed(
  bins: Bins,
  constraints: { text: string; pure: boolean }[],
  first: number,
  last: number,
): WhyNotSum {
  const told = bins.slice(first, last).filter(bin => bin !== null);
  const sum: WhyNotSum = {
    frames: 0,
    candidates: 0,
    cutFrames: 0,
    constraints: constraints.map(({ text, pure }) => ({ text, pure, firstFalse: 0, nearest: undefined })),
    nearest: undefined,
    confidence: undefined,
    unseenTypes: (told[0]?.unseen_types ?? []).filter(type =>
      told.every(bin => bin.unseen_types?.includes(type)),
    ),
  };
  told.forEach(bin => add(sum, bin));
  return sum;
}

function add(sum: WhyNotSum, bin: WhyNotBin): void {
  sum.frames += bin.frames ?? 0;
  sum.candidates += bin.candidates;
  sum.cutFrames += bin.cut_frames ?? 0;
  sum.nearest = nearer(sum.nearest, bin.nearest, rank);
  sum.confidence = joined(sum.confidence, bin.confidence);
  (bin.constraints ?? []).forEach((constraint, i) => {
    const known = sum.constraints[i];
    if (known) {
      known.firstFalse += constraint.first_false;
      known.nearest = nearer(known.nearest, constraint.nearest, margin);
    }
  });
}

function joined(a: ConfidenceMiss | undefined, b: ConfidenceMiss | undefined): ConfidenceMiss | undefined {
  if (!a || !b) {
    return a ?? b;
  }
  const isGreater = (b.confidence ?? -Infinity) > (a.confidence ?? -Infinity);
  return { ...(isGreater ? b : a), times: a.times + b.times };
}

// The miss whose measure is smaller, number by number; of equal ones the earlier.
function nearer(
  a: NearMiss | undefined,
  b: NearMiss | undefined,
  measure: (miss: NearMiss) => number[],
): NearMiss | undefined {
  if (!a || !b) {
    return a ?? b;
  }
  const first = measure(a);
  const second = measure(b);
  const at = first.findIndex((value, i) => value !== second[i]);
  return at >= 0 && (second[at] ?? Infinity) < (first[at] as number) ? b : a;
}

function rank(miss: NearMiss): number[] {
  return (miss.rank ?? [miss.false.length]).map(part => part ?? Infinity);
}

function margin(miss: NearMiss): number[] {
  return [miss.false[0]?.margin ?? Infinity];
}
