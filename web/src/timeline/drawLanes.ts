import type { Report } from '../report';
import type { State } from '../store';
import { sightings } from '../tracks';
import { fitted } from '../ui/canvas';
import { alarmColour, onAlarmColour, typeColour, type Palette } from '../ui/colours';
import { laneRange, type Lane } from './lanes';
import { barPlace, type Line } from './layout';

export interface LaneLook {
  palette: Palette;
  report: Report;
  state: Readonly<State>;
  left: number;
  right: number;
  xOf: (time: number) => number;
}

const kLeastWidth = 2;
const kDimmed = 0.22;
const kTextHeight = 11;
const kTextRoom = 34;
const kFont = '10px system-ui, sans-serif';

export function drawLine(context: CanvasRenderingContext2D, line: Line, look: LaneLook): void {
  if (line.kind !== 'lane') {
    if (line.kind === 'group' && !line.isOpen) {
      line.group.lanes.forEach(lane => drawBars(context, line, lane, look));
    }
    return;
  }
  if (line.lane.actor >= 0) {
    drawPresence(context, line, line.lane.actor, look);
  }
  drawBars(context, line, line.lane, look);
}

// When the actor was seen, as a thin band behind the events.
function drawPresence(context: CanvasRenderingContext2D, line: Line, actor: number, look: LaneLook): void {
  const { report, palette, xOf } = look;
  const { first, last, type } = report.data.actors[actor] as { first: number; last: number; type: number };
  const track = report.tracks[actor];
  context.fillStyle = typeColour(palette, type);
  context.globalAlpha = 0.32;
  for (const [from, to] of track ? sightings(track) : [[first, last] as const]) {
    const x = Math.max(look.left, xOf(from));
    const width = Math.min(look.right, xOf(to)) - x;
    if (width > -1) {
      context.fillRect(x, line.top + 4, Math.max(1, width), line.height - 8);
    }
  }
  context.globalAlpha = 1;
}

// Bars that would fall on the same pixels are drawn once, so that 50,000 of them cost little.
function drawBars(context: CanvasRenderingContext2D, line: Line, lane: Lane, look: LaneLook): void {
  const { report, state, palette, xOf } = look;
  const [first, last] = laneRange(report, lane, state.from, state.to);
  const reached = new Map<number, number>();
  for (let position = first; position < last; position += 1) {
    const event = lane.events[position] as number;
    const x = Math.max(look.left, xOf(report.begin(event)));
    const right = Math.min(look.right, Math.max(xOf(report.eventEnd(event)), x + kLeastWidth));
    const alarm = report.alarm(event);
    const isShown = state.isShown[event] === 1;
    const place = barPlace(line, position);
    const slot = ((alarm + 1) * 2 + (isShown ? 1 : 0)) * 4096 + (place.top - line.top);
    if (right <= look.left || right <= (reached.get(slot) ?? -1)) {
      continue;
    }
    reached.set(slot, right);
    context.globalAlpha = isShown ? 1 : kDimmed;
    context.fillStyle = alarmColour(palette, alarm);
    context.fillRect(x, place.top, right - x, place.height);
    if (right - x > 5) {
      context.fillStyle = palette.surface;
      context.fillRect(right - 0.75, place.top, 0.75, place.height);
    }
    if (lane.actor < 0 && place.height >= kTextHeight) {
      drawWho(
        context,
        event,
        { x, right: Math.min(right, nextBegin(line, lane, position, look)), ...place },
        look,
      );
    }
  }
  context.globalAlpha = 1;
}

// In a lane that is folded the next event may cover this one.
function nextBegin(line: Line, lane: Lane, position: number, look: LaneLook): number {
  const next = lane.events[position + 1];
  return next === undefined || line.isOpen ? Infinity : look.xOf(look.report.begin(next));
}

// Who takes part, in bars that have room for it.
function drawWho(
  context: CanvasRenderingContext2D,
  event: number,
  bar: { x: number; right: number; top: number; height: number },
  { report, palette }: LaneLook,
): void {
  const room = bar.right - bar.x - 8;
  if (room < kTextRoom) {
    return;
  }
  context.font = kFont;
  context.textAlign = 'left';
  context.textBaseline = 'middle';
  context.fillStyle = onAlarmColour(palette, report.alarm(event));
  context.fillText(fitted(context, report.bindings(event), room), bar.x + 4, bar.top + bar.height / 2 + 0.5);
}
