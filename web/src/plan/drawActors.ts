import type { Point } from '../data';
import type { Report } from '../report';
import { placeAt, trail } from '../tracks';
import { typeColour, typeShape, type Palette, type Shape } from '../ui/colours';
import { haloed } from './drawScene';
import { toScreen, type Projection } from './projection';

export interface ActorLook {
  palette: Palette;
  projection: Projection;
  time: number;
  trail: number;
  highlighted: Set<number>;
}

const kManyActors = 80;
const kTrailParts = 4;

// Draws who is there, and says which actor is where on the screen.
export function drawActors(
  context: CanvasRenderingContext2D,
  report: Report,
  look: ActorLook,
): { actor: number; at: Point }[] {
  const present = actorsAt(report, look.time);
  const isCrowd = present.length > kManyActors;
  for (const { actor } of present) {
    drawTrail(context, report, actor, look);
  }
  context.font = '600 11px system-ui, sans-serif';
  return present.map(({ actor, place }) => {
    const at = toScreen(look.projection, place);
    const { id, type } = report.data.actors[actor] as { id: number; type: number };
    const isHighlighted = look.highlighted.has(actor);
    drawMarker(
      context,
      at,
      typeShape(type),
      typeColour(look.palette, type),
      isHighlighted,
      isCrowd,
      look.palette,
    );
    if (!isCrowd || isHighlighted) {
      haloed(context, String(id), [at[0], at[1] - 14], look.palette.ink, look.palette.sunken);
    }
    return { actor, at };
  });
}

export function actorsAt(report: Report, time: number): { actor: number; place: Point }[] {
  const present: { actor: number; place: Point }[] = [];
  report.tracks.forEach((track, actor) => {
    const place = placeAt(track, time);
    if (place) {
      present.push({ actor, place });
    }
  });
  return present;
}

// Fades towards the past.
function drawTrail(context: CanvasRenderingContext2D, report: Report, actor: number, look: ActorLook): void {
  const track = report.tracks[actor];
  const type = report.data.actors[actor]?.type ?? 0;
  if (!track || look.trail <= 0) {
    return;
  }
  context.strokeStyle = typeColour(look.palette, type);
  context.lineWidth = look.highlighted.has(actor) ? 3 : 2;
  context.lineCap = 'butt';
  context.lineJoin = 'round';
  for (let part = 0; part < kTrailParts; part += 1) {
    const from = look.time - (look.trail * (kTrailParts - part)) / kTrailParts;
    const to = look.time - (look.trail * (kTrailParts - part - 1)) / kTrailParts;
    context.globalAlpha = (0.75 * (part + 1)) / kTrailParts;
    context.beginPath();
    for (const line of trail(track, from, to)) {
      line.forEach((point, i) => {
        const [x, y] = toScreen(look.projection, point);
        if (i === 0) {
          context.moveTo(x, y);
        } else {
          context.lineTo(x, y);
        }
      });
    }
    context.stroke();
  }
  context.globalAlpha = 1;
}

function drawMarker(
  context: CanvasRenderingContext2D,
  at: Point,
  shape: Shape,
  colour: string,
  isHighlighted: boolean,
  isSmall: boolean,
  palette: Palette,
): void {
  const radius = isSmall ? 3.5 : 6;
  if (isHighlighted) {
    context.beginPath();
    context.arc(at[0], at[1], radius + 5, 0, 2 * Math.PI);
    context.strokeStyle = palette.accent;
    context.lineWidth = 2.5;
    context.stroke();
  }
  outlineShape(context, shape, at, radius);
  context.fillStyle = colour;
  context.fill();
  context.strokeStyle = palette.sunken;
  context.lineWidth = isSmall ? 0.75 : 1.5;
  context.stroke();
}

const kCorners: Record<Exclude<Shape, 'circle'>, { count: number; turn: number; grow: number }> = {
  square: { count: 4, turn: Math.PI / 4, grow: 1.25 },
  triangle: { count: 3, turn: -Math.PI / 2, grow: 1.35 },
  diamond: { count: 4, turn: 0, grow: 1.25 },
  hexagon: { count: 6, turn: 0, grow: 1.1 },
};

export function outlineShape(
  context: CanvasRenderingContext2D,
  shape: Shape,
  [x, y]: Point,
  radius: number,
): void {
  context.beginPath();
  if (shape === 'circle') {
    context.arc(x, y, radius, 0, 2 * Math.PI);
    return;
  }
  const { count, turn, grow } = kCorners[shape];
  for (let i = 0; i < count; i += 1) {
    const angle = turn + (2 * Math.PI * i) / count;
    const corner: Point = [x + grow * radius * Math.cos(angle), y + grow * radius * Math.sin(angle)];
    if (i === 0) {
      context.moveTo(corner[0], corner[1]);
    } else {
      context.lineTo(corner[0], corner[1]);
    }
  }
  context.closePath();
}
