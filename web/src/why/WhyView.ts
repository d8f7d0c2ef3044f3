import type { NearMiss, WhyData } from '../data';
import type { Report } from '../report';
import type { Store } from '../store';
import { durationText, trimmed, trimmedOrDash } from '../time';
import { choice, element, labelled } from '../ui/dom';
import { evidenceDetails, header, marginText, objectsText } from './evidenceDetails';
import { binsIn, summed, type WhyNotSum } from './summary';

type Loaded = { why: WhyData } | { problem: string };

// Why the selected event was recognised, and why a model was not. Explanations are unpacked when first asked for.
export class WhyView {
  readonly root: HTMLElement;
  private readonly event = element('div', { class: 'why-event' });
  private readonly model = element('div', { class: 'why-model' });
  private readonly models: HTMLSelectElement;
  private loaded: Loaded | undefined;
  private isVisible = false;

  constructor(
    private readonly report: Report,
    private readonly store: Store,
    private readonly load: () => Promise<WhyData>,
  ) {
    const names = report.data.models.map((model, index): [string, string] => [String(index), model.name]);
    this.models = choice('Model that did not match', names, () => this.showModel());
    this.root = element('div', { class: 'why' }, [
      element('h2', { text: 'Why it was recognised' }),
      this.event,
      element('h2', { text: 'Why not' }),
      labelled('Model', this.models),
      this.model,
    ]);
    store.on(['selected'], () => this.showEvent());
    store.on(['from', 'to'], () => this.showModel());
  }

  async show(): Promise<void> {
    this.isVisible = true;
    if (!this.loaded) {
      this.event.replaceChildren(element('p', { class: 'muted', text: 'Unpacking the explanations …' }));
      try {
        this.loaded = { why: await this.load() };
      } catch (error) {
        this.loaded = { problem: error instanceof Error ? error.message : String(error) };
      }
    }
    this.showEvent();
    this.showModel();
  }

  hide(): void {
    this.isVisible = false;
  }

  private showEvent(): void {
    if (!this.isVisible || !this.loaded) {
      return;
    }
    const { selected } = this.store.state;
    if (selected < 0) {
      const words = 'Select an event in the timeline or the list to see what it rests on.';
      this.event.replaceChildren(element('p', { class: 'muted', text: words }));
      return;
    }
    this.models.value = String(this.report.data.events.model[selected]);
    this.event.replaceChildren(...this.eventParts(selected, this.loaded));
    this.showModel();
  }

  private eventParts(selected: number, loaded: Loaded): HTMLElement[] {
    const { report } = this;
    const parts = [
      element('h3', {}, [
        element('span', { text: `${report.model(selected).name} #${report.id(selected)}` }),
        element('span', { class: 'muted', text: ` ${report.bindings(selected)}` }),
      ]),
    ];
    if ('problem' in loaded) {
      return [...parts, element('p', { class: 'problem', text: `No explanations: ${loaded.problem}.` })];
    }
    const evidence = loaded.why.events[selected];
    if (!evidence) {
      return [
        ...parts,
        element('p', { class: 'muted', text: 'The report has no explanation of this event.' }),
      ];
    }
    const sentences = (evidence.summary ?? []).map(text => element('p', { text }));
    return [
      ...parts,
      ...sentences,
      evidenceDetails(evidence, id => this.choose(id)),
      this.partOf(selected),
      this.source(report.data.events.model[selected] as number),
    ];
  }

  private choose(id: number): void {
    const event = this.report.data.events.id.indexOf(id);
    if (event >= 0) {
      this.store.set({ selected: event, time: this.report.begin(event) });
    }
  }

  private partOf(event: number): HTMLElement {
    const wholes = this.report.partOf(event);
    if (wholes.length === 0) {
      return element('p', { class: 'muted', text: 'It is no part of another event.' });
    }
    const links = wholes.slice(0, 20).map(whole => {
      const text = `${this.report.model(whole).name} #${this.report.id(whole)}`;
      const link = element('button', { class: 'link', text });
      link.type = 'button';
      link.addEventListener('click', () =>
        this.store.set({ selected: whole, time: this.report.begin(whole) }),
      );
      return link;
    });
    const more = wholes.length > links.length ? [` and ${wholes.length - links.length} more`] : [];
    return element('p', { class: 'part-of' }, ['Part of ', ...links, ...more]);
  }

  private source(model: number): HTMLElement {
    const text = this.report.data.models[model]?.text ?? '';
    const details = element('details', { class: 'source' }, [
      element('summary', { text: 'Text of the model' }),
      element('pre', { text, attributes: { tabindex: '0' } }),
    ]);
    details.hidden = text === '';
    return details;
  }

  private showModel(): void {
    if (!this.isVisible || !this.loaded) {
      return;
    }
    const index = Number(this.models.value);
    const model = this.report.data.models[index];
    if (!model) {
      this.model.replaceChildren(element('p', { class: 'muted', text: 'The report has no models.' }));
      return;
    }
    const bins = 'why' in this.loaded ? this.loaded.why.models[index] : undefined;
    if (!('why' in this.loaded) || !bins || bins.bins.length === 0) {
      const words = 'The report does not say why models did not match.';
      this.model.replaceChildren(element('p', { class: 'muted', text: words }));
      return;
    }
    const { from, to } = this.store.state;
    const { binWidth } = this.loaded.why;
    const [first, last] = binsIn(from, to, binWidth, bins.bins.length);
    const texts = model.constraints.map(constraint => constraint.text);
    const isLast = last === bins.bins.length;
    this.model.replaceChildren(
      ...this.windowParts(index, first * binWidth, isLast ? this.report.end : last * binWidth),
      ...sumParts(summed(bins.bins, texts, first, last), seconds => this.store.set({ time: seconds * 1000 })),
    );
  }

  // Which part of the time it is, and the events of the model and its components there.
  private windowParts(model: number, from: number, to: number): HTMLElement[] {
    const { clock, data } = this.report;
    const within = (owner: number): number =>
      data.events.model.filter(
        (one, event) =>
          one === owner && this.report.eventEnd(event) >= from && this.report.begin(event) <= to,
      ).length;
    const count = within(model);
    const parts = (data.models[model]?.components ?? []).map(
      ({ name, model: part }) => `${name} (${data.models[part]?.name ?? '?'}) ${part < 0 ? 0 : within(part)}`,
    );
    const facts = element('p', {
      class: 'facts',
      text:
        `From ${clock.short(from)} to ${clock.short(to)} (${durationText(to - from)}; zoom the timeline to change it): ` +
        `${count} ${count === 1 ? 'event' : 'events'}.`,
    });
    return parts.length === 0
      ? [facts]
      : [facts, element('p', { text: `Events of its components: ${parts.join(', ')}.` })];
  }
}

function sumParts(sum: WhyNotSum, moveTo: (seconds: number) => void): HTMLElement[] {
  const parts: HTMLElement[] = [];
  parts.push(element('p', { text: `${sum.candidates.toLocaleString('en')} candidates were tried.` }));
  if (sum.cutFrames > 0) {
    parts.push(
      element('p', {
        class: 'problem',
        text: `In ${sum.cutFrames} frames there were too many to try them all.`,
      }),
    );
  }
  if (sum.confidence) {
    const { times, confidence, threshold } = sum.confidence;
    parts.push(
      element('p', {
        text:
          `All constraints held ${times === 1 ? 'once' : `${times} times`}, but the confidence was at most ` +
          `${trimmedOrDash(confidence, 3)}, and ${trimmedOrDash(threshold, 3)} is needed.`,
      }),
    );
  }
  if (sum.nearest) {
    parts.push(nearestText(sum.nearest, moveTo));
  }
  if (sum.constraints.length > 0) {
    parts.push(sumTable(sum));
  }
  return parts;
}

// Who came nearest, and when: the time leads there.
function nearestText(
  { when, objects, false: missed }: NearMiss,
  moveTo: (seconds: number) => void,
): HTMLElement {
  const misses = missed.map(finding => `${finding.text} ${finding.note ?? ''}`.trim()).join('; ');
  const time = element('button', {
    class: 'link',
    text: `${trimmed(when.seconds, 2)} s`,
    title: 'Go to this time',
  });
  time.type = 'button';
  time.addEventListener('click', () => moveTo(when.seconds));
  return element('p', {}, [
    `Nearest came ${objectsText(objects)} at `,
    time,
    `: ${misses || 'all constraints held'}.`,
  ]);
}

function sumTable(sum: WhyNotSum): HTMLElement {
  const most = Math.max(1, ...sum.constraints.map(constraint => constraint.firstFalse));
  const rows = sum.constraints.map(({ text, firstFalse, nearest }) => {
    const finding = nearest?.false[0];
    const bar = element('span', { class: 'meter' });
    bar.style.setProperty('--share', String(firstFalse / most));
    return element('tr', {}, [
      element('td', {}, [element('code', { text })]),
      element('td', { class: 'number' }, [firstFalse.toLocaleString('en'), bar]),
      element('td', {}, [
        finding?.seen ?? finding?.note ?? '',
        ...(finding && marginText(finding) !== ''
          ? [element('span', { class: 'note', text: `missed by ${marginText(finding)}` })]
          : []),
      ]),
    ]);
  });
  const head = element('tr', {}, [header('Constraint'), header('First false', 'number'), header('Nearest')]);
  return element('table', { class: 'findings' }, [element('thead', {}, [head]), element('tbody', {}, rows)]);
}
