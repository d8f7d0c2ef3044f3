import type { Report } from '../report';
import type { Store } from '../store';
import { durationText, trimmedOrDash } from '../time';
import { alarmStep } from '../ui/colours';
import { button, element, plain } from '../ui/dom';
import { download } from '../ui/download';
import { toCsv, toJson } from './exportEvents';
import { passing, kNoFilter, type Filter } from './filter';
import { FilterBar } from './FilterBar';
import { sorted, type Column, type Order } from './sort';
import { rowsInView, scrollFor } from './window';

const kRowHeight = 30;
const kColumns: [Column, string][] = [
  ['begin', 'Begin'],
  ['duration', 'Lasts'],
  ['model', 'Model'],
  ['kind', 'Kind'],
  ['objects', 'Who'],
  ['alarm', 'Alarm'],
  ['confidence', 'Conf.'],
];

// All events as text: what the timeline draws, for reading, searching and taking along.
export class ListView {
  readonly root: HTMLElement;
  private readonly filters: FilterBar;
  private readonly count = element('span', { class: 'count', attributes: { 'aria-live': 'polite' } });
  private readonly grid: HTMLElement;
  private readonly body: HTMLElement;
  private readonly headers = new Map<Column, HTMLElement>();
  private readonly empty = element('p', { class: 'empty' });
  private filter: Filter = kNoFilter;
  private order: Order = { column: 'begin', isDown: false };
  private rowOf = new Map<number, number>();

  constructor(
    private readonly report: Report,
    private readonly store: Store,
  ) {
    this.filters = new FilterBar(
      report,
      filter => {
        this.filter = filter;
        this.update();
      },
      order => this.sort(order),
    );
    this.body = element('div', { class: 'rows', attributes: { role: 'rowgroup' } });
    this.grid = element(
      'div',
      { class: 'grid', attributes: { role: 'grid', tabindex: '0', 'aria-label': 'Events' } },
      [this.header(), this.body],
    );
    this.root = element('div', { class: 'list' }, [
      element('div', { class: 'list-tools' }, [
        this.filters.root,
        this.count,
        button('CSV', { class: 'quiet', title: 'Save the events shown as CSV' }, () => this.save('csv')),
        button('JSON', { class: 'quiet', title: 'Save the events shown as JSON' }, () => this.save('json')),
      ]),
      this.filters.fields,
      this.grid,
      this.empty,
    ]);
    this.grid.addEventListener('scroll', () => this.renderRows());
    this.grid.addEventListener('keydown', event => this.key(event));
    new ResizeObserver(() => this.renderRows()).observe(this.grid);
    store.on(['selected'], state => this.showSelected(state.selected));
    this.update();
  }

  focusSearch(): void {
    this.filters.search.focus();
    this.filters.search.select();
  }

  // The event that stands so many rows below the selected one; without one, the first or the last.
  neighbour(step: number): number {
    const { shown, selected } = this.store.state;
    const row = this.rowOf.get(selected);
    return this.eventInRow(row === undefined ? (step > 0 ? 0 : shown.length - 1) : row + step);
  }

  // The event in a row, or in the nearest row that there is.
  private eventInRow(row: number): number {
    const { shown } = this.store.state;
    return shown[Math.max(0, Math.min(row, shown.length - 1))] ?? -1;
  }

  select(event: number): void {
    if (event >= 0) {
      this.store.set({ selected: event, time: this.report.begin(event) });
    }
  }

  private header(): HTMLElement {
    const cells = kColumns.map(([column, label]) => {
      const sort = button(label, { class: 'sort', attributes: { tabindex: '-1' } }, () =>
        this.sortBy(column),
      );
      const cell = element('div', { class: `cell ${column}`, attributes: { role: 'columnheader' } }, [sort]);
      sort.tabIndex = 0;
      this.headers.set(column, cell);
      return cell;
    });
    return element('div', { class: 'head', attributes: { role: 'rowgroup' } }, [
      element('div', { class: 'row', attributes: { role: 'row', 'aria-rowindex': '1' } }, cells),
    ]);
  }

  private sortBy(column: Column): void {
    this.sort({ column, isDown: this.order.column === column && !this.order.isDown });
  }

  private sort(order: Order): void {
    this.order = order;
    this.filters.setOrder(order);
    this.update();
  }

  private update(): void {
    const shown = sorted(this.report, passing(this.report, this.filter), this.order);
    const isShown = new Uint8Array(this.report.count);
    this.rowOf = new Map();
    shown.forEach((event, row) => {
      isShown[event] = 1;
      this.rowOf.set(event, row);
    });
    this.store.set({ shown, isShown });
    for (const [column, cell] of this.headers) {
      const direction = this.order.isDown ? 'descending' : 'ascending';
      cell.setAttribute('aria-sort', column === this.order.column ? direction : 'none');
    }
    const all = this.report.count.toLocaleString('en');
    const some = shown.length.toLocaleString('en');
    this.count.textContent = shown.length === this.report.count ? `${all} events` : `${some} of ${all}`;
    this.empty.hidden = shown.length > 0;
    this.empty.textContent =
      this.report.count === 0 ? 'No event was recognised.' : 'No event passes the filter.';
    this.grid.hidden = shown.length === 0;
    this.grid.setAttribute('aria-rowcount', String(shown.length + 1));
    this.body.style.height = `${shown.length * kRowHeight}px`;
    this.renderRows();
  }

  // The head stays on top of the rows.
  private get roomForRows(): number {
    return Math.max(0, this.grid.clientHeight - kRowHeight);
  }

  private renderRows(): void {
    const { shown, selected } = this.store.state;
    const { first, last } = rowsInView(this.grid.scrollTop, this.roomForRows, kRowHeight, shown.length);
    const rows: HTMLElement[] = [];
    for (let row = first; row < last; row += 1) {
      rows.push(this.row(shown[row] as number, row, selected));
    }
    this.body.replaceChildren(...rows);
    this.markActive(this.rowOf.get(selected));
  }

  private row(event: number, row: number, selected: number): HTMLElement {
    const { report } = this;
    const level = report.alarm(event);
    const alarm = element('span', {
      class: `level level-${level < 0 ? 'none' : alarmStep(level)}`,
      text: level < 0 ? '–' : report.alarmName(level),
    });
    const texts: Partial<Record<Column, string | Node>> = {
      begin: report.clock.tenths(report.begin(event)),
      duration: durationText(report.duration(event)),
      model: report.model(event).name,
      kind: report.kindName(report.model(event)),
      objects: report.bindings(event),
      alarm,
      confidence: trimmedOrDash(report.data.events.confidence[event], 2),
    };
    const made = element(
      'div',
      {
        class: event === selected ? 'row selected' : 'row',
        attributes: {
          role: 'row',
          id: `row-${row}`,
          'aria-rowindex': String(row + 2),
          'aria-selected': String(event === selected),
        },
        on: { click: () => this.select(event) },
      },
      kColumns.map(([column]) => cell(column, texts[column] ?? '')),
    );
    made.style.top = `${row * kRowHeight}px`;
    return made;
  }

  private markActive(row: number | undefined): void {
    if (row !== undefined && document.getElementById(`row-${row}`)) {
      this.grid.setAttribute('aria-activedescendant', `row-${row}`);
    } else {
      this.grid.removeAttribute('aria-activedescendant');
    }
  }

  private showSelected(event: number): void {
    const row = this.rowOf.get(event);
    if (row !== undefined) {
      this.grid.scrollTop = scrollFor(row, this.grid.scrollTop, this.roomForRows, kRowHeight);
    }
    this.renderRows();
  }

  private key(event: KeyboardEvent): void {
    const page = Math.max(1, Math.floor(this.roomForRows / kRowHeight) - 1);
    const { length } = this.store.state.shown;
    const steps: Record<string, number> = {
      ArrowDown: 1,
      ArrowUp: -1,
      PageDown: page,
      PageUp: -page,
    };
    const ends: Record<string, number> = { Home: 0, End: length - 1 };
    const step = steps[event.key];
    const end = ends[event.key];
    if (step === undefined && end === undefined) {
      return;
    }
    event.preventDefault();
    event.stopPropagation();
    this.select(step === undefined ? this.eventInRow(end as number) : this.neighbour(step));
  }

  private save(format: 'csv' | 'json'): void {
    const { shown } = this.store.state;
    const text = format === 'csv' ? toCsv(this.report, shown) : toJson(this.report, shown);
    const type = format === 'csv' ? 'text/csv' : 'application/json';
    download(`${this.report.data.title || 'report'}-events.${format}`, type, text);
  }
}

function cell(column: Column, content: string | Node): HTMLElement {
  const made = element('div', { class: `cell ${column}`, attributes: { role: 'gridcell' } }, [content]);
  if (typeof content === 'string') {
    made.title = plain(content);
  }
  return made;
}
