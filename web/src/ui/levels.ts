import type { Report } from '../report';
import { alarmStep } from './colours';
import { element } from './dom';

// The colours of the alarm levels that models of the report have.
export function levelLegend(report: Report): HTMLElement {
  const used = new Set(report.data.models.map(model => model.alarm));
  const entries = [...used]
    .sort((a, b) => a - b)
    .map(level =>
      element('li', {
        class: `level level-${level < 0 ? 'none' : alarmStep(level)}`,
        text: level < 0 ? 'no alarm' : report.alarmName(level),
      }),
    );
  return element('ul', { class: 'levels', attributes: { 'aria-label': 'Alarm levels' } }, entries);
}
