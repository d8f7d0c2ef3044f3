import type { Point } from '../data';

export interface Box {
  left: number;
  right: number;
  low: number;
  high: number;
}

// From the ground to the screen: a centre, a scale in pixels per unit, and which way y goes.
export interface Projection {
  centre: Point;
  scale: number;
  down: boolean;
  width: number;
  height: number;
}

const kZoomLimits = { out: 1 / 20, in: 400 };

export function boxOf(points: Iterable<Point>): Box | undefined {
  let box: Box | undefined;
  for (const [x, y] of points) {
    box = box
      ? {
          left: Math.min(box.left, x),
          right: Math.max(box.right, x),
          low: Math.min(box.low, y),
          high: Math.max(box.high, y),
        }
      : { left: x, right: x, low: y, high: y };
  }
  return box;
}

// Shows all of the box with a margin. A box without extent is shown as if it had one of 10.
export function fit(box: Box, down: boolean, width: number, height: number, margin: number): Projection {
  const wide = box.right - box.left || 10;
  const tall = box.high - box.low || 10;
  const scale = Math.min(Math.max(1, width - 2 * margin) / wide, Math.max(1, height - 2 * margin) / tall);
  return { centre: [(box.left + box.right) / 2, (box.low + box.high) / 2], scale, down, width, height };
}

export function toScreen(projection: Projection, [x, y]: Point): Point {
  const { centre, scale, width, height } = projection;
  return [width / 2 + (x - centre[0]) * scale, height / 2 + (y - centre[1]) * scale * sign(projection)];
}

export function toGround(projection: Projection, [x, y]: Point): Point {
  const { centre, scale, width, height } = projection;
  return [centre[0] + (x - width / 2) / scale, centre[1] + ((y - height / 2) / scale) * sign(projection)];
}

// What is under the pointer stays there.
export function zoomed(projection: Projection, factor: number, at: Point, fitScale: number): Projection {
  const scale = Math.min(
    Math.max(projection.scale * factor, fitScale * kZoomLimits.out),
    fitScale * kZoomLimits.in,
  );
  const ground = toGround(projection, at);
  const next = { ...projection, scale };
  const moved = toGround(next, at);
  return {
    ...next,
    centre: [projection.centre[0] + ground[0] - moved[0], projection.centre[1] + ground[1] - moved[1]],
  };
}

export function panned(projection: Projection, dx: number, dy: number): Projection {
  const { centre, scale } = projection;
  return { ...projection, centre: [centre[0] - dx / scale, centre[1] - (dy / scale) * sign(projection)] };
}

// A round length that is about as long as wanted on the screen, in units of the ground.
export function scaleBarLength(scale: number, wantedPixels: number): number {
  const length = wantedPixels / scale;
  const power = 10 ** Math.floor(Math.log10(length));
  const step = [5, 2, 1].find(candidate => candidate * power <= length) ?? 1;
  return step * power;
}

function sign(projection: Projection): number {
  return projection.down ? 1 : -1;
}
