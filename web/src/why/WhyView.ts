import type { Evidence, WhyData } from '../data';
import type { Report } from '../report';
import type { Store } from '../store';
import { durationText } from '../time';
import { choice, element, labelled } from '../ui/dom';
import { evidenceDetails } from './evidenceDetails';
import { secondsText } from './sentences';
import { whyNot, windowOf } from './whyNot';
import { whyNotDetails } from './whyNotDetails';

type Loaded = { why: WhyData } | { problem: string };

// Why the selected event was recognised, and why a model was not. Explanations are unpacked when first asked for.
export class WhyView {
  readonly root: HTMLElement;
  private readonly event = element('div', { class: 'why-event' });
  private readonly model = element('div', { class: 'why-model' });
  private readonly models: HTMLSelectElement;
  private loaded: Loaded | undefined;
  private isVisible = false;
  // Model and bins of what is shown of a model; others replace it.
  private shownKey = '';

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
      ...this.merged(selected, evidence),
      evidenceDetails(evidence, id => this.choose(id)),
      this.partOf(selected),
      this.source(report.data.events.model[selected] as number),
    ];
  }

  // A merge clause gives an event another begin than the one that was recognised.
  private merged(event: number, { begin }: Evidence): HTMLElement[] {
    const from = this.report.begin(event);
    if (Math.abs(from - (begin?.seconds ?? NaN) * 1000) < 1 || begin === undefined) {
      return [];
    }
    const text =
      `It is reported from ${secondsText(from / 1000)} to ${secondsText(this.report.eventEnd(event) / 1000)}: ` +
      'its model merges it with an earlier event.';
    return [element('p', { class: 'merged', text })];
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
      this.shownKey = '';
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
    const window = windowOf(this.report, this.loaded.why, from, to);
    const key = [index, window.first, window.last].join(' ');
    if (key !== this.shownKey) {
      this.shownKey = key;
      const { clock } = this.report;
      this.model.replaceChildren(
        element('p', {
          class: 'facts',
          text:
            `${clock.short(window.from)} to ${clock.short(window.to)}, ${durationText(window.to - window.from)}; ` +
            'zoom the timeline to change it.',
        }),
        ...whyNotDetails(whyNot(this.report, this.loaded.why, index, window), seconds =>
          this.store.set({ time: seconds * 1000 }),
        ),
      );
    }
  }
}
