import type { WhyData } from '../data';
import type { Report } from '../report';
import { binsIn, summed, type WhyNotSum } from './summary';

// Whole bins: from `first` to before `last`, and their times.
export interface Window {
  first: number;
  last: number;
  from: number;
  to: number;
}

export interface ComponentOutcome {
  variable: string;
  name: string;
  events: number;
  // Why there was none.
  missing: WhyNot | undefined;
}

// Why a model did not match in a window of time.
export interface WhyNot extends WhyNotSum {
  name: string;
  window: Window;
  events: number;
  components: ComponentOutcome[];
}

// The whole bins that are nearest to a span of time.
export function windowOf(report: Report, why: WhyData, from: number, to: number): Window {
  const { binWidth } = why;
  const count = why.models.reduce((most, { bins }) => Math.max(most, bins.length), 0);
  const [first, last] = binsIn(from, to, binWidth, count);
  // The last bin takes what is left.
  const end = last >= count ? report.data.clock.end : last * binWidth;
  return { first, last, from: first * binWidth, to: Math.max(first * binWidth, end) };
}

// Answers for a model and, down to the last, for those components of which there was no event.
export function whyNot(report: Report, why: WhyData, model: number, window: Window): WhyNot {
  const events = countEvents(report, why, window.from, window.to);
  const lookedBack = window.from > 0 ? window.from - (why.lookBack ?? 0) : window.from;
  const parts = countEvents(report, why, lookedBack, window.to);
  const known = new Map<number, WhyNot>();
  const answer = (index: number): WhyNot => {
    const { name, components, constraints } = report.data.models[index] as Report['data']['models'][number];
    const bins = why.models[index]?.bins ?? [];
    const made: WhyNot = {
      ...summed(bins, constraints, window.first, window.last),
      name,
      window,
      events: events[index] ?? 0,
      components: [],
    };
    // Known before its components are asked: what contains itself is not asked for ever.
    known.set(index, made);
    made.components = components.map(({ name: variable, model: part, modelName }) => {
      const count = parts[part] ?? 0;
      return {
        variable,
        name: modelName,
        events: count,
        missing: count === 0 && part >= 0 ? (known.get(part) ?? answer(part)) : undefined,
      };
    });
    return made;
  };
  return answer(model);
}

// Of each model, how many events were recognised in some frame of the time.
function countEvents(report: Report, why: WhyData, from: number, to: number): number[] {
  const counts = report.data.models.map(() => 0);
  report.data.events.model.forEach((model, event) => {
    const seconds = why.events[event]?.recognised?.seconds;
    const begin = seconds === undefined ? report.begin(event) : seconds * 1000;
    if (report.eventEnd(event) >= from && begin <= to) {
      counts[model] = (counts[model] as number) + 1;
    }
  });
  return counts;
}
