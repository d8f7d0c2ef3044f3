import type { Point, SceneObject } from '../data';
import { fitted } from '../ui/canvas';
import type { Palette } from '../ui/colours';
import { scaleBarLength, toScreen, type Projection } from './projection';
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
): void {
  const first = toScreen(projection, [placement[0], placement[1]]);
  const second = toScreen(projection, [placement[2], placement[3]]);
  const left = Math.min(first[0], second[0]);
  const top = Math.min(first[1], second[1]);
  const isUpsideDown = first[1] < second[1];
  const height = Math.abs(first[1] - second[1]);
  context.save();
  context.globalAlpha = 0.85;
  context.translate(left, isUpsideDown ? top + height : top);
  context.scale(1, isUpsideDown ? -1 : 1);
  context.drawImage(picture, 0, 0, Math.abs(first[0] - second[0]), height);
  context.restore();
}

export function drawScene(context: CanvasRenderingContext2D, objects: SceneObject[], look: SceneLook): void {
  objects.forEach((object, index) => drawShape(context, object, look, look.highlighted.has(index)));
  context.font = kFont;
  objects.forEach((object, index) => drawName(context, object, look, look.highlighted.has(index)));
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

// A name stands in the middle of what it names, in the upper part of zones, where it is in nobody's way.
function drawName(
  context: CanvasRenderingContext2D,
  object: SceneObject,
  look: SceneLook,
  isHighlighted: boolean,
): void {
  const points = object.shape.map(point => toScreen(look.projection, point));
  const xs = points.map(point => point[0]);
  const ys = points.map(point => point[1]);
  if (points.length === 0 || object.name === '') {
    return;
  }
  const left = Math.min(...xs);
  const width = Math.max(...xs) - left;
  const top = Math.min(...ys);
  const height = Math.max(...ys) - top;
  const room = Math.max(width - 8, isHighlighted ? 160 : 64);
  const name = fitted(context, object.name, room);
  const inside = isZone(object) && height > 40 && width > 40;
  const at: Point = [left + width / 2, inside ? top + 12 : top + height / 2];
  if (!isZone(object) && !object.closed) {
    at[1] -= 10;
  }
  haloed(context, name, at, isHighlighted ? look.palette.accent : look.palette.muted, look.palette.sunken);
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
  const y = projection.height - 14;
  context.strokeStyle = palette.muted;
  context.lineWidth = 1.5;
  context.beginPath();
  context.moveTo(x, y - 5);
  context.lineTo(x, y);
  context.lineTo(x + pixels, y);
  context.lineTo(x + pixels, y - 5);
  context.stroke();
  context.font = kFont;
  haloed(context, `${trimmed(length, 4)} ${unit}`, [x + pixels / 2, y - 10], palette.muted, palette.sunken);
}
