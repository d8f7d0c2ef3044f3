import type { Report } from '../report';
import { typeShape, typeStep } from '../ui/colours';
import { element } from '../ui/dom';

const kMost = 8;

// Shape and colour of each type of actor that occurs.
export function legend(report: Report): HTMLElement {
  const used = new Set(report.data.actors.map(actor => actor.type));
  const entries = [...used]
    .sort((a, b) => a - b)
    .slice(0, kMost)
    .map(type =>
      element('li', {}, [
        element('span', {
          class: `swatch shape-${typeShape(type)} type-${typeStep(type)}`,
          attributes: { 'aria-hidden': 'true' },
        }),
        element('span', { class: 'legend-name', text: report.data.types[type] ?? 'Actor' }),
      ]),
    );
  return element('ul', { class: 'legend', attributes: { 'aria-label': 'Types of actors' } }, entries);
}
