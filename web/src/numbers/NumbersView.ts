import type uPlot from 'uplot';
import type { Report } from '../report';
import type { Store } from '../store';
import { durationText, trimmed } from '../time';
import { readPalette, type Palette } from '../ui/colours';
import { choice, element, plain } from '../ui/dom';
import { lengthChart, timeChart } from './charts';
import { actorsOverTime, binWidth, countsOfModels, eventsPerBin, histogram, median } from './count';
import { stays } from './dwell';

// Counts and charts. Made when first looked at.
export class NumbersView {
  readonly root = element('div', { class: 'numbers' });
  private readonly events = element('div', { class: 'chart', attributes: { role: 'img' } });
  private readonly dwell = element('div', { class: 'chart', attributes: { role: 'img' } });
  private readonly actors = element('div', { class: 'chart', attributes: { role: 'img' } });
  private readonly dwellFacts = element('p', { class: 'facts', attributes: { 'aria-live': 'polite' } });
  private readonly zones: { name: string; lengths?: number[]; index: number }[];
  private charts: uPlot[] = [];
  private model = -1;
  private zone = 0;
  private isVisible = false;
  private isMade = false;

  constructor(
    private readonly report: Report,
    store: Store,
  ) {
    this.zones = report.data.scene.objects
      .map((object, index) => ({ name: object.name, index, object }))
      .filter(
        ({ object }) =>
          object.closed && object.shape.length > 2 && object.type.toLowerCase().includes('zone'),
      )
      .map(({ name, index }) => ({ name, index }));
    store.on(['theme'], () => this.draw());
    new ResizeObserver(() => this.draw()).observe(this.root);
  }

  show(): void {
    this.isVisible = true;
    if (!this.isMade) {
      this.isMade = true;
      this.make();
    }
    this.draw();
  }

  hide(): void {
    this.isVisible = false;
  }

  private make(): void {
    const { models } = this.report.data;
    const width = binWidth(this.report.end);
    const rate = width === 60_000 ? 'a minute' : `in ${durationText(width)}`;
    const model = choice(
      'Model of the chart',
      [['-1', 'All models'], ...models.map((entry, i): [string, string] => [String(i), entry.name])],
      value => {
        this.model = Number(value);
        this.draw();
      },
    );
    const zone = choice(
      'Zone of the chart',
      this.zones.map(({ name }, i) => [String(i), name]),
      value => {
        this.zone = Number(value);
        this.draw();
      },
    );
    const title = (text: string, ...more: HTMLElement[]): HTMLElement =>
      element('div', { class: 'chart-title' }, [element('h2', { text }), ...more]);
    this.root.replaceChildren(
      title('Events of each model'),
      this.countTable(),
      title(`Events ${rate}`, model),
      this.events,
      title('Stays in a zone', ...(this.zones.length > 0 ? [zone] : [])),
      this.dwellFacts,
      this.dwell,
      title('Actors over time'),
      this.actors,
      ...this.runParts(title('The run')),
    );
  }

  // What the program counted while it recognised.
  private runParts(title: HTMLElement): HTMLElement[] {
    const rows = Object.entries(this.report.data.statistics).map(([name, value]) =>
      element('tr', {}, [
        element('th', { text: name, attributes: { scope: 'row' } }),
        element('td', {
          class: 'number',
          text: typeof value === 'number' ? value.toLocaleString('en') : String(value),
        }),
      ]),
    );
    return rows.length === 0 ? [] : [title, element('table', { class: 'run' }, [element('tbody', {}, rows)])];
  }

  private countTable(): HTMLElement {
    const counts = countsOfModels(this.report);
    const most = Math.max(1, ...counts.map(({ count }) => count));
    const head = element('tr', {}, [
      ...['Model', 'Events', 'A minute', 'In all'].map((text, i) =>
        element('th', { class: i > 0 ? 'number' : '', text, attributes: { scope: 'col' } }),
      ),
    ]);
    const rows = counts.map(({ model, count, perMinute, total }) => {
      const bar = element('span', { class: 'meter' });
      bar.style.setProperty('--share', String(count / most));
      const name = this.report.data.models[model]?.name ?? '';
      return element('tr', {}, [
        element('td', { class: 'name', title: name }, [element('span', { text: name }), bar]),
        element('td', { class: 'number', text: count.toLocaleString('en') }),
        element('td', { class: 'number', text: trimmed(perMinute, 2) }),
        element('td', { class: 'number', text: count > 0 ? durationText(total) : '' }),
      ]);
    });
    return element('table', { class: 'counts' }, [element('thead', {}, [head]), element('tbody', {}, rows)]);
  }

  private draw(): void {
    const width = this.events.clientWidth;
    if (!this.isVisible || width === 0) {
      return;
    }
    this.charts.forEach(chart => chart.destroy());
    this.charts = [];
    const look = { palette: readPalette(), width, end: this.report.end };
    const { clock } = this.report;
    const bins = eventsPerBin(this.report, this.model, binWidth(this.report.end));
    this.charts.push(timeChart(this.events, [bins.times, bins.values], clock, 'bars', look));
    this.events.setAttribute(
      'aria-label',
      `Events over time; at most ${Math.max(...bins.values)} in one bar`,
    );
    const present = actorsOverTime(this.report);
    this.charts.push(timeChart(this.actors, [present.times, present.values], clock, 'steps', look));
    this.actors.setAttribute(
      'aria-label',
      `Actors over time; at most ${present.values.reduce((a, b) => Math.max(a, b), 0)} at once`,
    );
    this.drawDwell(look);
  }

  private drawDwell(look: { palette: Palette; width: number }): void {
    const zone = this.zones[this.zone];
    if (!zone) {
      this.dwellFacts.textContent = 'The scene has no zones.';
      return;
    }
    const shape = this.report.data.scene.objects[zone.index]?.shape ?? [];
    zone.lengths ??= this.report.tracks.flatMap(track => stays(track, shape));
    const { lengths } = zone;
    if (lengths.length === 0) {
      this.dwellFacts.textContent = plain(`Nobody was in ${zone.name}.`);
      this.dwell.setAttribute('aria-label', this.dwellFacts.textContent);
      return;
    }
    const total = lengths.reduce((sum, length) => sum + length, 0);
    this.dwellFacts.textContent =
      `${lengths.length.toLocaleString('en')} ${lengths.length === 1 ? 'stay' : 'stays'}, ` +
      `median ${durationText(median(lengths))}, mean ${durationText(total / lengths.length)}, in all ${durationText(total)}`;
    const { edges, counts } = histogram(lengths);
    const middles = counts.map((_, i) => ((edges[i] as number) + (edges[i + 1] as number)) / 2);
    const end = edges[edges.length - 1] ?? 1;
    this.charts.push(lengthChart(this.dwell, [middles, counts], { ...look, end }));
    this.dwell.setAttribute(
      'aria-label',
      plain(`Lengths of stays in ${zone.name}: ${this.dwellFacts.textContent}`),
    );
  }
}
