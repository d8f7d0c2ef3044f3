import type { Report } from '../report';
import { durationText, trimmedOrDash } from '../time';
import { element } from '../ui/dom';

// What the pointer is over: a few lines that follow it.
export class Tooltip {
  readonly root = element('div', { class: 'tooltip', attributes: { 'aria-hidden': 'true' } });

  constructor(private readonly report: Report) {
    this.root.hidden = true;
  }

  show(event: number, x: number, y: number): void {
    const { report } = this;
    const level = report.alarmName(report.alarm(event));
    const { clock } = report;
    const lines = [
      element('strong', { text: `${report.model(event).name} #${report.id(event)}` }),
      element('span', { text: report.bindings(event) }),
      element('span', {
        text: `${clock.exact(report.begin(event))} – ${clock.exact(report.eventEnd(event))}`,
      }),
      element('span', {
        text: `${durationText(report.duration(event))}, confidence ${trimmedOrDash(report.data.events.confidence[event], 3)}`,
      }),
    ];
    const words = [level, report.alarmText(event)].filter(word => word !== '').join(': ');
    if (words !== '') {
      lines.push(element('span', { class: 'tooltip-alarm', text: words }));
    }
    this.root.replaceChildren(...lines);
    this.root.hidden = false;
    const { offsetWidth, offsetHeight } = this.root;
    const left = Math.min(x + 14, window.innerWidth - offsetWidth - 8);
    const top = y + 18 + offsetHeight > window.innerHeight ? y - offsetHeight - 10 : y + 18;
    this.root.style.transform = `translate(${Math.max(8, left)}px, ${Math.max(8, top)}px)`;
  }

  hide(): void {
    this.root.hidden = true;
  }
}
