import type { Report } from '../report';
import type { Store } from '../store';
import { tickStep } from '../time';
import { Surface, fitted } from '../ui/canvas';
import { readPalette, type Palette } from '../ui/colours';
import { element } from '../ui/dom';
import { isForPage, onDrag } from '../ui/drag';
import { drawLine } from './drawLanes';
import { drawLinks, type Placed } from './drawLinks';
import { buildGroups, foldedAtFirst, laneRange, type LaneGroup } from './lanes';
import { barPlace, emptyKey, kHeights, layOut, lineAt, totalHeight, type Line } from './layout';
import { pannedSpan, showing, whole, zoomedSpan, type Span } from './span';
import { Tooltip } from './tooltip';

const kAxis = 26;
const kRightEdge = 8;
const kWheelStep = 0.002;
const kFont = '12px system-ui, sans-serif';
const kReach = 3;
const kLetter = 7;

// All events over time, a lane for each model and each actor.
export class TimelineView {
  readonly root: HTMLElement;
  private readonly surface: Surface;
  private readonly tooltip: Tooltip;
  private readonly groups: LaneGroup[];
  private readonly folded: Set<string>;
  private readonly opened = new Set<string>();
  private lines: Line[] = [];
  private top = 0;
  private gutter = 190;
  private isScrubbing = false;
  private isOnPaper = false;
  // Of the line that keys have chosen; empty for none.
  private currentKey = '';
  private readonly said = element('p', { class: 'unseen', attributes: { role: 'status' } });
  private palette: Palette = readPalette();

  constructor(
    private readonly report: Report,
    private readonly store: Store,
  ) {
    this.groups = buildGroups(report);
    this.folded = foldedAtFirst(this.groups);
    this.tooltip = new Tooltip(report);
    const stage = element('div', {
      class: 'stage',
      attributes: {
        tabindex: '0',
        role: 'application',
        'aria-label':
          'Timeline of events; the list of events says the same as text. Left and right move it, plus and minus zoom, up and down choose a line, Enter opens or folds it.',
      },
    });
    this.root = element('section', { class: 'timeline', attributes: { 'aria-label': 'Timeline' } }, [
      stage,
      this.tooltip.root,
      this.said,
    ]);
    this.surface = new Surface(
      stage,
      context => this.paint(context),
      () => this.resize(),
    );
    this.relayOut();
    this.listen(stage);
    store.on(['time', 'from', 'to', 'isShown'], () => this.surface.redraw());
    store.on(['selected'], state => this.reveal(state.selected));
    store.on(['theme'], () => this.refresh());
  }

  private refresh(): void {
    this.palette = readPalette();
    this.surface.drawNow();
  }

  zoom(factor: number, at = this.store.state.time): void {
    const { from, to } = this.store.state;
    const centre = at >= from && at <= to ? at : (from + to) / 2;
    this.setSpan(zoomedSpan({ from, to }, factor, centre, this.report.end));
  }

  showWhole(): void {
    this.setSpan(whole(this.report.end));
  }

  // Fills the view with the event and a little before and after it.
  showEvent(event: number): void {
    const room = Math.max(this.report.duration(event) * 0.5, 500);
    const from = this.report.begin(event) - room;
    const to = this.report.eventEnd(event) + room;
    this.setSpan(zoomedSpan({ from, to }, 1, (from + to) / 2, this.report.end));
  }

  // On paper nothing scrolls: all lines that fit are shown.
  layOnPaper(width: number, most: number): void {
    this.palette = readPalette();
    this.isOnPaper = true;
    this.surface.hold(width, Math.min(most, totalHeight(this.lines) + kAxis));
  }

  layOnScreen(): void {
    this.palette = readPalette();
    this.isOnPaper = false;
    this.surface.letGo();
  }

  private setSpan(span: Span): void {
    this.store.set(span);
  }

  private relayOut(): void {
    this.lines = layOut(this.groups, this.folded, this.opened);
    this.scrollTo(this.top);
  }

  private resize(): void {
    const { width } = this.surface;
    this.gutter = this.isOnPaper
      ? Math.min(width * 0.45, this.namesWidth())
      : Math.min(230, Math.max(160, width * 0.175));
    this.scrollTo(this.top);
  }

  // Room for the longest name, about: on paper nothing tells what is cut.
  private namesWidth(): number {
    const longest = this.lines.reduce((most, line) => Math.max(most, wordsOf(line).label.length), 0);
    return Math.max(220, longest * kLetter + 90);
  }

  private scrollTo(top: number): void {
    const room = totalHeight(this.lines) - (this.surface.height - kAxis);
    this.top = Math.max(0, Math.min(top, room));
    this.surface.redraw();
  }

  private get plotWidth(): number {
    return Math.max(1, this.surface.width - this.gutter - kRightEdge);
  }

  private xOf(time: number): number {
    const { from, to } = this.store.state;
    return this.gutter + ((time - from) / (to - from)) * this.plotWidth;
  }

  private timeAt(x: number): number {
    const { from, to } = this.store.state;
    return from + ((x - this.gutter) / this.plotWidth) * (to - from);
  }

  private listen(stage: HTMLElement): void {
    onDrag(stage, {
      start: event => {
        this.isScrubbing = event.offsetY < kAxis && event.offsetX > this.gutter;
        if (this.isScrubbing) {
          this.scrub(event.offsetX);
        }
      },
      move: (dx, dy, event) => {
        this.tooltip.hide();
        if (this.isScrubbing) {
          this.scrub(event.clientX - stage.getBoundingClientRect().left);
          return;
        }
        const { from, to } = this.store.state;
        this.setSpan(pannedSpan({ from, to }, (-dx / this.plotWidth) * (to - from), this.report.end));
        this.scrollTo(this.top - dy);
      },
      click: event => this.click(event.offsetX, event.offsetY),
    });
    stage.addEventListener('pointermove', event => {
      if (event.buttons === 0) {
        this.hover(event);
      }
    });
    stage.addEventListener('pointerleave', () => this.tooltip.hide());
    stage.addEventListener('wheel', event => this.wheel(event), { passive: false });
    stage.addEventListener('keydown', event => this.key(event));
    stage.addEventListener('focus', () => this.surface.redraw());
    stage.addEventListener('blur', () => this.surface.redraw());
  }

  private scrub(x: number): void {
    this.store.set({ time: Math.max(0, Math.min(this.timeAt(x), this.report.end)) });
  }

  // Over the names the wheel moves the lanes, over the bars it zooms in time; sideways and with shift it moves in time.
  private wheel(event: WheelEvent): void {
    if (isForPage(event)) {
      return;
    }
    event.preventDefault();
    this.tooltip.hide();
    const { from, to } = this.store.state;
    const sideways = event.shiftKey ? event.deltaY || event.deltaX : event.deltaX;
    if (sideways !== 0) {
      this.setSpan(pannedSpan({ from, to }, (sideways / this.plotWidth) * (to - from), this.report.end));
    } else if (event.offsetX < this.gutter) {
      this.scrollTo(this.top + event.deltaY);
    } else {
      const at = this.timeAt(event.offsetX);
      this.setSpan(zoomedSpan({ from, to }, Math.exp(-event.deltaY * kWheelStep), at, this.report.end));
    }
  }

  private key(event: KeyboardEvent): void {
    const { from, to } = this.store.state;
    const step = (to - from) * 0.1;
    switch (event.key) {
      case 'ArrowLeft':
        this.setSpan(pannedSpan({ from, to }, -step, this.report.end));
        break;
      case 'ArrowRight':
        this.setSpan(pannedSpan({ from, to }, step, this.report.end));
        break;
      case 'ArrowUp':
        this.choose(-1);
        break;
      case 'ArrowDown':
        this.choose(1);
        break;
      case 'Enter':
        this.toggle(this.lines[this.currentLine()]);
        this.sayCurrent();
        break;
      default:
        return;
    }
    event.preventDefault();
    event.stopPropagation();
  }

  private currentLine(): number {
    return this.lines.findIndex(line => keyOf(line) === this.currentKey);
  }

  // The line above or below the current one, or the first in view.
  private choose(step: number): void {
    const at = this.currentLine();
    const first = this.lines.findIndex(line => line.top >= this.top);
    const next = at < 0 ? Math.max(0, first) : Math.max(0, Math.min(at + step, this.lines.length - 1));
    const line = this.lines[next];
    if (line) {
      this.currentKey = keyOf(line);
      this.sayCurrent();
      const room = this.surface.height - kAxis;
      const below = line.top + line.height - room;
      this.scrollTo(Math.min(line.top, Math.max(below, this.top)));
    }
  }

  private sayCurrent(): void {
    const line = this.lines[this.currentLine()];
    if (line) {
      const { label, count } = wordsOf(line);
      const events = line.kind === 'lane' ? counted(Number(count), 'event') : count;
      const state = canToggle(line) ? [line.isOpen ? 'open' : 'folded'] : [];
      this.said.textContent = [label, events, ...state].join(', ');
    }
  }

  private click(x: number, y: number): void {
    if (y < kAxis) {
      return;
    }
    const line = lineAt(this.lines, y - kAxis + this.top);
    if (x < this.gutter) {
      this.toggle(line);
      return;
    }
    const event = this.eventAt(x, y);
    if (event >= 0) {
      this.store.set({ selected: event, time: this.report.begin(event) });
    } else if (line && line.kind !== 'lane') {
      this.toggle(line);
    } else {
      this.store.set({ selected: -1 });
      this.scrub(x);
    }
  }

  private toggle(line: Line | undefined): void {
    if (!line || !canToggle(line)) {
      return;
    }
    const keys = line.kind === 'group' ? this.folded : this.opened;
    const key = keyOf(line);
    if (!keys.delete(key)) {
      keys.add(key);
    }
    this.relayOut();
  }

  toggleAll(): void {
    if (this.folded.size > 0) {
      this.folded.clear();
      this.groups.forEach(group => this.opened.add(emptyKey(group)));
    } else {
      this.groups.forEach(group => this.folded.add(group.key));
    }
    this.relayOut();
  }

  private hover(event: PointerEvent): void {
    const found =
      event.offsetY > kAxis && event.offsetX > this.gutter ? this.eventAt(event.offsetX, event.offsetY) : -1;
    if (found >= 0) {
      this.tooltip.show(found, event.clientX, event.clientY);
    } else {
      this.tooltip.hide();
    }
  }

  // The shortest event under the pointer, for it would be hard to hit otherwise.
  private eventAt(x: number, y: number): number {
    const height = y - kAxis + this.top;
    const line = lineAt(this.lines, height);
    if (!line || line.kind === 'empty' || (line.kind === 'group' && line.isOpen)) {
      return -1;
    }
    let best = -1;
    for (const lane of line.kind === 'group' ? line.group.lanes : [line.lane]) {
      const [first, last] = laneRange(this.report, lane, this.timeAt(x - kReach), this.timeAt(x + kReach));
      for (let position = first; position < last; position += 1) {
        const event = lane.events[position] as number;
        const place = barPlace(line, position);
        const isInRow = !line.isOpen || (height >= place.top - 1 && height <= place.top + place.height + 1);
        const isInTime = this.xOf(this.report.eventEnd(event)) >= x - kReach;
        if (isInRow && isInTime && (best < 0 || this.report.duration(event) < this.report.duration(best))) {
          best = event;
        }
      }
    }
    return best;
  }

  private reveal(event: number): void {
    if (event >= 0) {
      const { from, to } = this.store.state;
      this.setSpan(
        showing({ from, to }, this.report.begin(event), this.report.eventEnd(event), this.report.end),
      );
      const line = this.lineOf(event);
      const room = this.surface.height - kAxis;
      if (line && (line.top < this.top || line.top + line.height > this.top + room)) {
        this.scrollTo(line.top - room / 3);
      }
    }
    this.surface.redraw();
  }

  // The lane of the event's model, or its group's line while that is folded.
  private lineOf(event: number): Line | undefined {
    const key = `model ${this.report.data.events.model[event] as number}`;
    return this.lines.find(line =>
      line.kind === 'lane'
        ? line.lane.key === key
        : line.kind === 'group' && !line.isOpen && line.group.lanes.some(lane => lane.key === key),
    );
  }

  private placeOf(event: number): Placed | undefined {
    const line = this.lineOf(event);
    if (!line) {
      return undefined;
    }
    const position = line.kind === 'lane' && line.isOpen ? line.lane.events.indexOf(event) : 0;
    const { top, height } = barPlace(line, position);
    const left = this.xOf(this.report.begin(event));
    return {
      left,
      right: Math.max(left + 2, this.xOf(this.report.eventEnd(event))),
      middle: top + height / 2,
      height,
    };
  }

  private paint(context: CanvasRenderingContext2D): void {
    const { width, height } = this.surface;
    context.fillStyle = this.palette.surface;
    context.fillRect(0, 0, width, height);
    this.paintAxis(context);
    context.save();
    context.beginPath();
    context.rect(0, kAxis, width, height - kAxis);
    context.clip();
    context.translate(0, kAxis - this.top);
    this.paintLines(context);
    context.restore();
    this.paintCursor(context);
  }

  private visibleLines(): Line[] {
    const bottom = this.top + this.surface.height - kAxis;
    return this.lines.filter(line => line.top + line.height > this.top && line.top < bottom);
  }

  private paintLines(context: CanvasRenderingContext2D): void {
    const { width } = this.surface;
    const visible = this.visibleLines();
    context.save();
    context.beginPath();
    context.rect(this.gutter, this.top, width - this.gutter, this.surface.height);
    context.clip();
    const look = {
      palette: this.palette,
      report: this.report,
      state: this.store.state,
      left: this.gutter,
      right: width,
      xOf: (time: number): number => this.xOf(time),
    };
    for (const line of visible) {
      this.paintRule(context, line);
      drawLine(context, line, look);
    }
    if (this.store.state.selected >= 0) {
      drawLinks(context, {
        palette: this.palette,
        report: this.report,
        selected: this.store.state.selected,
        place: event => this.placeOf(event),
      });
    }
    context.restore();
    visible.forEach(line => this.paintName(context, line));
    this.paintCurrent(context);
    context.fillStyle = this.palette.line;
    context.fillRect(this.gutter - 1, this.top, 1, this.surface.height);
  }

  private paintRule(context: CanvasRenderingContext2D, line: Line): void {
    if (line.kind === 'group') {
      context.fillStyle = this.palette.sunken;
      context.fillRect(0, line.top, this.surface.width, line.height);
    } else {
      context.fillStyle = this.palette.line;
      context.globalAlpha = 0.6;
      context.fillRect(0, line.top + line.height - 1, this.surface.width, 1);
      context.globalAlpha = 1;
    }
  }

  private paintName(context: CanvasRenderingContext2D, line: Line): void {
    const isGroup = line.kind === 'group';
    const middle = line.top + Math.min(line.height, kHeights.group) / 2;
    context.fillStyle = isGroup ? this.palette.sunken : this.palette.surface;
    context.fillRect(0, line.top, this.gutter - 1, line.height - (isGroup ? 0 : 1));
    context.textBaseline = 'middle';
    context.font = isGroup ? `600 ${kFont}` : kFont;
    const { label, count } = wordsOf(line);
    const left = isGroup ? 22 : 32;
    const labelWidth = context.measureText(label).width;
    context.font = kFont;
    // Where the words do not fit beside the name, the number says it alone.
    const isTight = left + labelWidth + context.measureText(count).width + 20 > this.gutter;
    const shortCount = isTight ? (count.split(' ')[0] as string) : count;
    context.textAlign = 'right';
    context.fillStyle = this.palette.muted;
    context.fillText(shortCount, this.gutter - 10, middle);
    const countWidth = context.measureText(shortCount).width;
    context.font = isGroup ? `600 ${kFont}` : kFont;
    if (canToggle(line)) {
      chevron(context, isGroup ? 12 : 22, middle, line.isOpen, this.palette.muted);
    }
    context.textAlign = 'left';
    const isMuted = line.kind === 'empty' || (line.kind === 'lane' && line.lane.events.length === 0);
    context.fillStyle = isMuted ? this.palette.muted : this.palette.ink;
    context.fillText(fitted(context, label, this.gutter - left - countWidth - 20), left, middle);
  }

  private paintCurrent(context: CanvasRenderingContext2D): void {
    const line = this.lines[this.currentLine()];
    if (line && document.activeElement === this.surface.host) {
      context.strokeStyle = this.palette.accent;
      context.lineWidth = 2;
      context.strokeRect(3, line.top + 1, this.gutter - 6, line.height - 3);
    }
  }

  private paintAxis(context: CanvasRenderingContext2D): void {
    const { from, to } = this.store.state;
    const { clock } = this.report;
    const { palette } = this;
    const step = tickStep(to - from, this.plotWidth / 92);
    context.font = kFont;
    context.textBaseline = 'middle';
    context.textAlign = 'left';
    context.fillStyle = palette.muted;
    context.fillText(fitted(context, clock.date(Math.max(0, from)), this.gutter - 24), 12, kAxis / 2);
    context.textAlign = 'center';
    for (const time of clock.ticks(from, to, step)) {
      const x = this.xOf(time);
      context.fillStyle = palette.line;
      context.fillRect(x, kAxis - 5, 1, this.surface.height);
      const label = clock.tick(time, step);
      const half = context.measureText(label).width / 2;
      if (x - half > this.gutter && x + half < this.surface.width) {
        context.fillStyle = palette.muted;
        context.fillText(label, x, kAxis / 2 - 1);
      }
    }
    context.fillStyle = palette.line;
    context.fillRect(0, kAxis - 1, this.surface.width, 1);
  }

  private paintCursor(context: CanvasRenderingContext2D): void {
    const x = this.xOf(this.store.state.time);
    if (x < this.gutter || x > this.surface.width) {
      return;
    }
    context.fillStyle = this.palette.accent;
    context.fillRect(x - 0.75, kAxis - 8, 1.5, this.surface.height);
    context.beginPath();
    context.moveTo(x - 5, kAxis - 10);
    context.lineTo(x + 5, kAxis - 10);
    context.lineTo(x, kAxis - 3);
    context.closePath();
    context.fill();
  }
}

function canToggle(line: Line): boolean {
  return line.kind !== 'lane' || line.lane.rows > 1;
}

function keyOf(line: Line): string {
  if (line.kind === 'lane') {
    return line.lane.key;
  }
  return line.kind === 'group' ? line.group.key : emptyKey(line.group);
}

function counted(count: number, one: string): string {
  return `${count} ${one}${count === 1 ? '' : 's'}`;
}

function wordsOf(line: Line): { label: string; count: string } {
  if (line.kind === 'lane') {
    return { label: line.lane.label, count: String(line.lane.events.length) };
  }
  const { label, lanes, empty } = line.group;
  return line.kind === 'group'
    ? { label, count: counted(lanes.length + empty.length, line.group.key === 'actors' ? 'actor' : 'model') }
    : { label: 'without events', count: String(empty.length) };
}

function chevron(
  context: CanvasRenderingContext2D,
  x: number,
  y: number,
  isOpen: boolean,
  colour: string,
): void {
  context.strokeStyle = colour;
  context.lineWidth = 1.5;
  context.beginPath();
  if (isOpen) {
    context.moveTo(x - 4, y - 2);
    context.lineTo(x, y + 2);
    context.lineTo(x + 4, y - 2);
  } else {
    context.moveTo(x - 2, y - 4);
    context.lineTo(x + 2, y);
    context.lineTo(x - 2, y + 4);
  }
  context.stroke();
}
