import type { Evidence, Finding, NamedObject } from '../data';
import { durationText, trimmed, trimmedOrDash } from '../time';
import { element } from '../ui/dom';

const kDepth = 20;

// Constraints and sub-events of an explained event, the sub-events folded one in the other.
export function evidenceDetails(evidence: Evidence, choose: (id: number) => void, depth = 0): HTMLElement {
  const parts = depth < kDepth ? (evidence.components ?? []) : [];
  return element('div', { class: 'evidence' }, [
    element('p', {
      class: 'facts',
      text:
        `First recognised at ${seconds(evidence.recognised?.seconds)}, ` +
        `confidence ${trimmedOrDash(evidence.confidence, 3)} (needed ${trimmedOrDash(evidence.threshold, 3)})`,
    }),
    findingsTable(evidence.constraints ?? []),
    ...parts.map(({ variable, event }) => part(variable, event, choose, depth)),
  ]);
}

function part(variable: string, event: Evidence, choose: (id: number) => void, depth: number): HTMLElement {
  const show = element('button', { class: 'link', text: 'Show', title: `Select event ${event.id}` });
  show.type = 'button';
  show.addEventListener('click', () => choose(event.id));
  const details = element('details', { class: 'part' }, [
    element('summary', {}, [
      element('span', { class: 'variable', text: variable }),
      element('strong', { text: ` ${event.model} ` }),
      element('span', { class: 'muted', text: `#${event.id} ${objectsText(event.objects ?? [])}` }),
    ]),
    element('p', { class: 'facts' }, [
      `${seconds(event.begin?.seconds)} – ${seconds(event.end?.seconds)} `,
      show,
    ]),
    evidenceDetails(event, choose, depth + 1),
  ]);
  details.open = depth === 0;
  return details;
}

export function findingsTable(findings: Finding[]): HTMLElement {
  if (findings.length === 0) {
    return element('p', { class: 'muted', text: 'The model has no constraints.' });
  }
  const head = element('tr', {}, [header('Constraint'), header('Seen'), header('Needed'), header('Margin')]);
  const rows = findings.map(finding =>
    element('tr', {}, [
      element('td', {}, [
        element('span', {
          class: finding.holds ? 'mark holds' : 'mark fails',
          text: finding.holds ? '✓' : '✗',
          attributes: { role: 'img', 'aria-label': finding.holds ? 'holds' : 'does not hold' },
        }),
        element('code', { text: finding.text }),
      ]),
      element('td', { text: finding.seen ?? '' }),
      element('td', { text: finding.needed ?? '' }),
      element('td', { class: 'muted', text: finding.note ?? marginText(finding) }),
    ]),
  );
  return element('table', { class: 'findings' }, [element('thead', {}, [head]), element('tbody', {}, rows)]);
}

export function header(text: string, name = ''): HTMLElement {
  return element('th', { class: name, text, attributes: { scope: 'col' } });
}

export function marginText(finding: Finding): string {
  if (typeof finding.margin !== 'number') {
    return '';
  }
  const unit = finding.unit === 'degree' ? '°' : finding.unit ? ` ${finding.unit}` : '';
  return `${trimmed(finding.margin, 3)}${unit}`;
}

export function objectsText(objects: NamedObject[]): string {
  return objects.map(({ variable, id, name }) => `${variable}=${name || id}`).join(' ');
}

function seconds(value: number | undefined): string {
  return value === undefined ? '?' : durationText(value * 1000);
}
