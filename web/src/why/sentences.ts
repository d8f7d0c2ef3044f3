import type { Finding, NearMiss } from '../data';
import { objectsText } from './evidenceDetails';
import type { ConstraintSum } from './summary';
import type { WhyNot } from './whyNot';

// Why a model did not match, in the words of `scenariomatch explain --model`.
export function sentencesOf(why: WhyNot): string[] {
  const sentences = [headSentence(why)];
  if (why.events > 0 || why.frames === 0) {
    return sentences;
  }
  if (why.candidates > 0) {
    sentences.push(counted(why.candidates, 'candidate was tried.', 'candidates were tried.'));
  }
  if (why.cutFrames > 0) {
    sentences.push(
      `In ${counted(why.cutFrames, 'frame', 'frames')} there were too many candidates to try all.`,
    );
  }
  return append(sentences, reasonsOf(why, new Map()));
}

function headSentence({ name, window, events, frames }: WhyNot): string {
  if (frames === 0) {
    return `${name} was not tried: no frame lies in the time asked for.`;
  }
  const time = `from ${secondsText(window.from / 1000)} to ${secondsText(window.to / 1000)}`;
  return events === 0
    ? `${name} was not recognised ${time}.`
    : `${name} was recognised ${time}, ${counted(events, 'event', 'events')}.`;
}

// Why there was no event. A model that is met again has said it already.
function reasonsOf(why: WhyNot, known: Map<WhyNot, string[]>): string[] {
  const told = known.get(why);
  if (told) {
    return told;
  }
  const sentences = why.unseenTypes.map(type => `No object of type ${type} was seen.`);
  known.set(why, sentences);
  for (const { variable, name, events, missing } of why.components) {
    if (events === 0) {
      append(sentences, [`${why.name} needs ${variable} (${name}), which was never recognised.`]);
      append(sentences, missing ? reasonsOf(missing, known) : []);
    }
  }
  append(sentences, apartSentences(why));
  append(sentences, confidenceSentences(why));
  append(sentences, nearestSentences(why));
  if (sentences.length === 0 && why.frames > 0 && why.candidates === 0) {
    sentences.push('There was no candidate.');
  }
  return sentences;
}

function apartSentences({ name, candidates, components }: WhyNot): string[] {
  const isApart = candidates === 0 && components.length > 0 && components.every(({ events }) => events > 0);
  return isApart ? [`The components of ${name} were recognised, but never together.`] : [];
}

function confidenceSentences({ confidence: miss }: WhyNot): string[] {
  if (!miss) {
    return [];
  }
  const who = miss.when ? ` (${objectsText(miss.objects ?? [])} at ${secondsText(miss.when.seconds)})` : '';
  const short = miss.threshold === null || miss.confidence === null ? null : miss.threshold - miss.confidence;
  return [
    `${counted(miss.times, 'candidate', 'candidates')} met all constraints and ` +
      `${miss.times === 1 ? 'was' : 'were'} not confident enough: ${numberText(miss.confidence)} at best${who}, ` +
      `${numberText(miss.threshold)} needed, ${numberText(short)} short.`,
  ];
}

// The nearest of all; where it is not known, the nearest to the constraint that failed first most.
function nearestSentences(why: WhyNot): string[] {
  const { name, nearest, constraints } = why;
  if (nearest && isNear(nearest, constraints.length)) {
    const failing = nearest.false.length;
    return [
      `${name} came nearest${withObjects(nearest)} at ${secondsText(nearest.when.seconds)}: ` +
        `${failing} of ${constraints.length} constraints ${failing === 1 ? 'was' : 'were'} false.`,
      ...nearest.false.map(finding => `${findingText(finding)}.`),
      ...(nearest.hindsight
        ? ['Sub-events that were still going on then are taken as they were in the end.']
        : []),
    ];
  }
  const most = constraints.reduce<ConstraintSum | undefined>(
    (best, one) => (one.firstFalse > (best?.firstFalse ?? 0) ? one : best),
    undefined,
  );
  if (!most) {
    return [];
  }
  const count = counted(most.firstFalse, 'candidate', 'candidates');
  return [
    `${most.text} was the first to be false for ${count}.`,
    ...(most.pure ? [] : ['Its operator promises nothing, so its values are not known.']),
  ];
}

// Whether something is known of who came nearest: some constraint held, or it is a matter of more and less.
function isNear(nearest: NearMiss, constraints: number): boolean {
  const [failing, unmeasured] = nearest.rank ?? [];
  return nearest.false.length < constraints || (unmeasured ?? 0) < (failing ?? 0);
}

function withObjects({ objects }: NearMiss): string {
  return objects.length === 0 ? '' : ` with ${objectsText(objects)}`;
}

export function findingText({ text, seen, needed, note }: Finding): string {
  const value = seen ? `: ${seen}${needed ? `, needed ${needed}` : ''}` : '';
  return `${text}${value}${note ? `${seen ? ', ' : ': '}${note}` : ''}`;
}

export function secondsText(seconds: number): string {
  return `${seconds} s`;
}

function numberText(value: number | null): string {
  return value === null ? '–' : String(Number(value.toPrecision(6)));
}

function counted(count: number, one: string, many: string): string {
  return `${count} ${count === 1 ? one : many}`;
}

// Says nothing twice.
function append(sentences: string[], more: string[]): string[] {
  sentences.push(...more.filter(sentence => !sentences.includes(sentence)));
  return sentences;
}
