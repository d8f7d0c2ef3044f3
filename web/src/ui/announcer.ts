import type { Report } from '../report';
import type { Store } from '../store';
import { durationText } from '../time';
import { element, plain } from './dom';

// Says the selection to those who do not see it, and shows it in one line to those who do.
export class Announcer {
  readonly root = element('p', {
    class: 'selection',
    attributes: { 'aria-live': 'polite', id: 'selection' },
  });

  constructor(
    private readonly report: Report,
    store: Store,
  ) {
    store.on(['selected'], ({ selected }) => this.say(selected));
    this.say(store.state.selected);
  }

  private say(event: number): void {
    const { report } = this;
    if (event < 0) {
      this.root.textContent = 'No event selected';
      this.root.classList.add('none');
      return;
    }
    const level = report.alarmName(report.alarm(event));
    const words = [
      `${report.bindings(event)}, ${report.clock.short(report.begin(event))}, ${durationText(report.duration(event))}`,
      ...(level ? [level] : []),
    ];
    this.root.classList.remove('none');
    this.root.replaceChildren(
      element('strong', { text: `${report.model(event).name} #${report.id(event)}` }),
      plain(` ${words.join(', ')}`),
    );
  }
}
