import type { NearMiss } from '../data';
import { element } from '../ui/dom';
import { header, marginText, objectsText } from './evidenceDetails';
import { secondsText, sentencesOf } from './sentences';
import type { ConstraintSum } from './summary';
import type { ComponentOutcome, WhyNot } from './whyNot';

type MoveTo = (seconds: number) => void;

// What became of a model's candidates, and of those of the components that it lacked, one in the other.
export function whyNotDetails(why: WhyNot, moveTo: MoveTo): HTMLElement[] {
  return [
    element('p', { class: 'lead', text: sentencesOf(why).join(' ') }),
    ...tablesOf(why, moveTo, new Set([why])),
  ];
}

function tablesOf(why: WhyNot, moveTo: MoveTo, told: Set<WhyNot>): HTMLElement[] {
  return [
    ...(why.components.length > 0 ? [componentTable(why.components)] : []),
    ...(why.constraints.length > 0 && why.candidates > 0 ? [constraintTable(why.constraints, moveTo)] : []),
    ...why.components.flatMap(component => missingPart(component, moveTo, told)),
  ];
}

// Each model is told once, however often it is a component.
function missingPart(
  { variable, missing }: ComponentOutcome,
  moveTo: MoveTo,
  told: Set<WhyNot>,
): HTMLElement[] {
  if (!missing || told.has(missing)) {
    return [];
  }
  told.add(missing);
  const { candidates } = missing;
  const words = candidates === 1 ? '1 candidate' : `${candidates.toLocaleString('en')} candidates`;
  const head = [
    element('span', { class: 'variable', text: variable }),
    element('strong', { text: ` ${missing.name} ` }),
    element('span', { class: 'muted', text: words }),
  ];
  const tables = tablesOf(missing, moveTo, told);
  if (tables.length === 0) {
    return [element('p', { class: 'part' }, head)];
  }
  const details = element('details', { class: 'part' }, [element('summary', {}, head), ...tables]);
  details.open = true;
  return [details];
}

function componentTable(components: ComponentOutcome[]): HTMLElement {
  const rows = components.map(({ variable, name, events }) =>
    element('tr', {}, [
      element('td', { text: variable }),
      element('td', { text: name }),
      element('td', { class: 'number', text: events.toLocaleString('en') }),
    ]),
  );
  return table('components', [header('Component'), header('Model'), header('Events', 'number')], rows);
}

function constraintTable(constraints: ConstraintSum[], moveTo: MoveTo): HTMLElement {
  const most = Math.max(1, ...constraints.map(({ firstFalse }) => firstFalse));
  const rows = constraints.map(({ text, pure, firstFalse, nearest }) => {
    const bar = element('span', { class: 'meter' });
    bar.style.setProperty('--share', String(firstFalse / most));
    return element('tr', {}, [
      element('td', {}, [element('code', { text })]),
      element('td', { class: 'number' }, [firstFalse.toLocaleString('en'), bar]),
      element('td', {}, nearest ? nearestParts(nearest, moveTo) : pure ? [] : ['not known']),
      element('td', { text: nearest?.false[0]?.needed ?? '' }),
    ]);
  });
  return table(
    'findings',
    [header('Constraint'), header('First false', 'number'), header('Nearest'), header('Needed')],
    rows,
  );
}

// What was seen, how far it was, who and when: the time leads there.
function nearestParts({ when, objects, false: missed }: NearMiss, moveTo: MoveTo): (HTMLElement | string)[] {
  const [finding] = missed;
  const margin = finding ? marginText(finding) : '';
  const note = finding?.note ?? (margin === '' ? '' : `missed by ${margin}`);
  const time = element('button', {
    class: 'link',
    text: secondsText(when.seconds),
    title: 'Go to this time',
    on: { click: () => moveTo(when.seconds) },
  });
  time.type = 'button';
  return [
    finding?.seen ?? '',
    ...(note === '' ? [] : [element('span', { class: 'note', text: note })]),
    element('span', { class: 'note' }, [`${objectsText(objects)} at `, time]),
  ];
}

function table(name: string, heads: HTMLElement[], rows: HTMLElement[]): HTMLElement {
  return element('table', { class: name }, [
    element('thead', {}, [element('tr', {}, heads)]),
    element('tbody', {}, rows),
  ]);
}
