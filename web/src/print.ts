import type { PlanView } from './plan/PlanView';
import type { Report } from './report';
import type { Store } from './store';
import { durationText, trimmedOrDash } from './time';
import type { TimelineView } from './timeline/TimelineView';
import { applyTheme } from './ui/theme';
import { element } from './ui/dom';

const kMostRows = 500;
const kPaper = { width: 900, plan: 500, timeline: 1200 };

// On paper the colours are light, and the list is a plain table of what is shown.
export function preparePrint(
  report: Report,
  store: Store,
  plan: PlanView,
  timeline: TimelineView,
): HTMLElement {
  const root = element('section', { class: 'print-list' });
  window.addEventListener('beforeprint', () => {
    applyTheme('light');
    plan.layOnPaper(kPaper.width, kPaper.plan);
    timeline.layOnPaper(kPaper.width, kPaper.timeline);
    root.replaceChildren(element('h2', { text: 'Events' }), table(report, store.state.shown));
  });
  window.addEventListener('afterprint', () => {
    applyTheme(store.state.theme);
    plan.layOnScreen();
    timeline.layOnScreen();
    root.replaceChildren();
  });
  return root;
}

function table(report: Report, shown: Int32Array): HTMLElement {
  const head = element(
    'tr',
    {},
    ['Begin', 'Lasts', 'Model', 'Who', 'Alarm', 'Confidence'].map(text =>
      element('th', { text, attributes: { scope: 'col' } }),
    ),
  );
  const rows = Array.from(shown.subarray(0, kMostRows), event =>
    element(
      'tr',
      {},
      [
        report.clock.exact(report.begin(event)),
        durationText(report.duration(event)),
        report.model(event).name,
        report.bindings(event),
        report.alarmName(report.alarm(event)),
        trimmedOrDash(report.data.events.confidence[event], 3),
      ].map(text => element('td', { text })),
    ),
  );
  const rest = shown.length - rows.length;
  return element('div', {}, [
    element('table', {}, [element('thead', {}, [head]), element('tbody', {}, rows)]),
    ...(rest > 0 ? [element('p', { text: `… and ${rest.toLocaleString('en')} more.` })] : []),
  ]);
}
