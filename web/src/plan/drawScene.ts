import type { Point, SceneObject } from '../data';
import { fitted } from '../ui/canvas';
import type { Palette } from '../ui/colours';
import { boxOf, scaleBarLength, toScreen, type Box, type Projection } from './projection';
import { trimmed } from '../time';

export interface SceneLook {
  palette: Palette;
  projection: Projection;
  highlighted: Set<number>;
}

const kFont = '12px system-ui, sans-serif';

export function drawBackground(
  context: CanvasRenderingContext2D,
  picture: HTMLImageElement,
  placement: [number, number, number, number],
  projection: Projection,
  strength: number,
): void {
  const first = toScreen(projection, [placement[0], placement[1]]);
  const second = toScreen(projection, [placement[2], placement[3]]);
  const left = Math.min(first[0], second[0]);
  const top = Math.min(first[1], second[1]);
  const isUpsideDown = first[1] < second[1];
  const height = Math.abs(first[1] - second[1]);
  context.save();
  context.globalAlpha = strength;
  context.translate(left, isUpsideDown ? top + height : top);
  context.scale(1, isUpsideDown ? -1 : 1);
  context.drawImage(picture, 0, 0, Math.abs(first[0] - second[0]), height);
  context.restore();
}

export function drawScene(context: CanvasRenderingContext2D, objects: SceneObject[], look: SceneLook): void {
  objects.forEach((object, index) => drawShape(context, object, look, look.highlighted.has(index)));
  context.font = kFont;
  drawNames(context, objects, look);
}

function isZone(object: SceneObject): boolean {
  return object.closed && object.type.toLowerCase().includes('zone');
}

function drawShape(
  context: CanvasRenderingContext2D,
  object: SceneObject,
  look: SceneLook,
  isHighlighted: boolean,
): void {
  const { palette, projection } = look;
  const points = object.shape.map(point => toScreen(projection, point));
  const first = points[0];
  if (!first) {
    return;
  }
  context.beginPath();
  points.forEach(([x, y], i) => (i === 0 ? context.moveTo(x, y) : context.lineTo(x, y)));
  const zone = isZone(object);
  const isSolid = object.closed;
  if (isSolid) {
    context.closePath();
    context.fillStyle = zone ? palette.zoneFill : palette.equipmentFill;
    context.fill();
  }
  context.lineJoin = 'round';
  context.lineCap = 'round';
  context.strokeStyle = isHighlighted ? palette.accent : outline(palette, zone, isSolid);
  context.lineWidth = isHighlighted ? 2.5 : isSolid ? 1 : 3;
  context.setLineDash(zone && !isHighlighted ? [5, 4] : []);
  context.stroke();
  context.setLineDash([]);
}

function outline(palette: Palette, zone: boolean, isSolid: boolean): string {
  if (zone) {
    return palette.zone;
  }
  return isSolid ? palette.equipment : palette.wall;
}

// Names that would stand on another name are left out, those of highlighted objects last.
function drawNames(context: CanvasRenderingContext2D, objects: SceneObject[], look: SceneLook): void {
  const taken: Box[] = [];
  const order = objects.map((_, index) => index);
  order.sort((a, b) => Number(look.highlighted.has(b)) - Number(look.highlighted.has(a)) || a - b);
  for (const index of order) {
    const object = objects[index] as SceneObject;
    const place = namePlace(object, look.projection);
    if (object.name === '' || !place) {
      continue;
    }
    const isHighlighted = look.highlighted.has(index);
    const name = fitted(context, object.name, isHighlighted ? Math.max(place.room, 240) : place.room);
    const half = context.measureText(name).width / 2;
    const [x, y] = place.at;
    const box = { left: x - half, right: x + half, low: y - 7, high: y + 7 };
    if (!taken.some(other => touches(box, other))) {
      taken.push(box);
      haloed(
        context,
        name,
        place.at,
        isHighlighted ? look.palette.accent : look.palette.muted,
        look.palette.sunken,
      );
    }
  }
}

function touches(a: Box, b: Box): boolean {
  return a.left < b.right && b.left < a.right && a.low < b.high && b.low < a.high;
}

// In the middle of what is named; in the upper part of large zones, where it is in nobody's way; beside the longest part
// of a wall.
function namePlace(object: SceneObject, projection: Projection): { at: Point; room: number } | undefined {
  const points = object.shape.map(point => toScreen(projection, point));
  const box = boxOf(object.closed ? points : longestPart(points));
  if (!box) {
    return undefined;
  }
  const middle: Point = [(box.left + box.right) / 2, (box.low + box.high) / 2];
  const room = Math.max(box.right - box.left - 8, 120);
  if (!object.closed) {
    return { at: [middle[0], middle[1] - 11], room };
  }
  const isRoomy = box.high - box.low > 40 && box.right - box.left > 60;
  return { at: isZone(object) && isRoomy ? [middle[0], box.low + 12] : middle, room };
}

function longestPart(points: Point[]): Point[] {
  let longest: Point[] = points.slice(0, 1);
  let length = -1;
  for (let i = 1; i < points.length; i += 1) {
    const [from, to] = [points[i - 1] as Point, points[i] as Point];
    const distance = Math.hypot(to[0] - from[0], to[1] - from[1]);
    if (distance > length) {
      length = distance;
      longest = [from, to];
    }
  }
  return longest;
}

// Text with a rim in the colour of the ground, so that lines behind it do not cross it.
export function haloed(
  context: CanvasRenderingContext2D,
  text: string,
  [x, y]: Point,
  colour: string,
  rim: string,
): void {
  context.textAlign = 'center';
  context.textBaseline = 'middle';
  context.lineJoin = 'round';
  context.lineWidth = 3;
  context.strokeStyle = rim;
  context.strokeText(text, x, y);
  context.fillStyle = colour;
  context.fillText(text, x, y);
}

export function drawScaleBar(
  context: CanvasRenderingContext2D,
  projection: Projection,
  palette: Palette,
  unit: string,
): void {
  const length = scaleBarLength(projection.scale, 120);
  const pixels = length * projection.scale;
  const x = 14;
  const y = projection.height - 12;
  context.strokeStyle = palette.muted;
  context.lineWidth = 1.5;
  context.beginPath();
  context.moveTo(x, y - 5);
  context.lineTo(x, y);
  context.lineTo(x + pixels, y);
  context.lineTo(x + pixels, y - 5);
  context.stroke();
  context.font = kFont;
  context.font = kFont;
  const text = `${trimmed(length, 4)} ${unit}`;
  const middle = x + pixels + 8 + context.measureText(text).width / 2;
  haloed(context, text, [middle, y - 2], palette.muted, palette.sunken);
}
