import type { Report } from '../report';
import { choice, element, labelled, button } from '../ui/dom';
import { kNoFilter, kWithoutAlarm, type Filter } from './filter';
import { kColumnNames, type Column, type Order } from './sort';

const kTypingPause = 120;

// The fields that limit the list.
export class FilterBar {
  readonly root: HTMLElement;
  readonly search: HTMLInputElement;
  private filter: Filter = { ...kNoFilter };
  private readonly more: HTMLElement;
  private readonly toggle: HTMLButtonElement;
  private readonly clearing = button('Clear filters', { class: 'quiet' }, () => this.clear());
  private readonly column = choice('Sort by', kColumnNames, () => this.sorted());
  private readonly direction = choice(
    'Direction',
    [
      ['false', 'Rising'],
      ['true', 'Falling'],
    ],
    () => this.sorted(),
  );
  private pause = 0;

  constructor(
    private readonly report: Report,
    private readonly changed: (filter: Filter) => void,
    private readonly sort: (order: Order) => void,
  ) {
    this.search = element('input', {
      class: 'search',
      attributes: { type: 'search', placeholder: 'Search events (/)', 'aria-label': 'Search events' },
    });
    this.search.addEventListener('input', () => this.set({ words: this.search.value }));
    this.more = element('div', { class: 'filters', attributes: { id: 'filters' } });
    this.more.hidden = true;
    this.toggle = button(
      'Filter',
      { class: 'quiet', attributes: { 'aria-expanded': 'false', 'aria-controls': 'filters' } },
      () => this.setOpen(this.more.hidden),
    );
    this.root = element('div', { class: 'filter-bar' }, [this.search, this.toggle]);
    this.fill();
  }

  // Stands below the bar.
  get fields(): HTMLElement {
    return this.more;
  }

  private setOpen(isOpen: boolean): void {
    this.more.hidden = !isOpen;
    this.toggle.setAttribute('aria-expanded', String(isOpen));
  }

  private set(part: Partial<Filter>): void {
    this.filter = { ...this.filter, ...part };
    const count = Object.entries(this.filter).filter(
      ([key, value]) => key !== 'words' && value !== kNoFilter[key as keyof Filter],
    ).length;
    this.toggle.textContent = count > 0 ? `Filter (${count})` : 'Filter';
    window.clearTimeout(this.pause);
    this.pause = window.setTimeout(() => this.changed(this.filter), kTypingPause);
  }

  clear(): void {
    this.filter = { ...kNoFilter };
    this.search.value = '';
    this.fill();
    this.clearing.focus();
    this.set({});
  }

  private fill(): void {
    const { data } = this.report;
    const zones = data.scene.objects.map((object, index): [string, string] => [String(index), object.name]);
    const actors = data.actors.map((_, index): [string, string] => [
      String(index),
      this.report.actorName(index),
    ]);
    const named = (names: string[]): [string, string][] =>
      names.map((name, index): [string, string] => [String(index), name]);
    this.more.replaceChildren(
      this.select('Model', 'All models', named(data.models.map(model => model.name)), 'model'),
      this.select('Kind', 'All kinds', named(data.kinds), 'kind'),
      this.select('Alarm', 'Any', this.alarms(), 'alarm'),
      this.select('Actor', 'Everybody', actors, 'actor'),
      this.select('Zone or thing', 'Any', zones, 'zone'),
      this.timeField('From', 'from'),
      this.timeField('To', 'to'),
      this.lengthField('At least, s', 'shortest'),
      this.lengthField('At most, s', 'longest'),
      this.clearing,
      labelled('Sort by', this.column),
      labelled('Direction', this.direction),
    );
  }

  private alarms(): [string, string][] {
    const levels = this.report.data.alarms.map((name, index): [string, string] => [
      String(index),
      index + 1 < this.report.data.alarms.length ? `${name} or more` : name,
    ]);
    return [[String(kWithoutAlarm), 'No alarm'], ...levels];
  }

  // Shows how the list is sorted.
  setOrder({ column, isDown }: Order): void {
    this.column.value = column;
    this.direction.value = String(isDown);
  }

  private sorted(): void {
    this.sort({ column: this.column.value as Column, isDown: this.direction.value === 'true' });
  }

  private select(
    label: string,
    all: string,
    choices: [string, string][],
    key: 'model' | 'kind' | 'alarm' | 'actor' | 'zone',
  ): HTMLElement {
    const field = choice(label, [['-1', all], ...choices], value => this.set({ [key]: Number(value) }));
    return labelled(label, field);
  }

  private timeField(label: string, key: 'from' | 'to'): HTMLElement {
    const field = element('input', {
      attributes: { type: 'text', placeholder: 'hh:mm:ss or s', 'aria-label': label },
    });
    field.addEventListener('input', () => {
      const time = this.report.clock.read(field.value);
      field.setAttribute('aria-invalid', String(time === undefined && field.value.trim() !== ''));
      this.set({ [key]: time });
    });
    return labelled(label, field);
  }

  private lengthField(label: string, key: 'shortest' | 'longest'): HTMLElement {
    const field = element('input', {
      attributes: { type: 'number', min: '0', step: 'any', 'aria-label': label },
    });
    field.addEventListener('input', () => {
      const seconds = field.valueAsNumber;
      this.set({ [key]: Number.isFinite(seconds) ? seconds * 1000 : undefined });
    });
    return labelled(label, field);
  }
}
