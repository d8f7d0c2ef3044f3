import type { Point } from '../data';
import { sightingsOf, type Track } from '../tracks';

// Lengths of the stays of an actor inside a polygon. A stay ends where the actor leaves it or is not seen any more; who is seen
// there at one moment only stays no time, and stays all the same.
export function stays(track: Track, polygon: Point[]): number[] {
  const lengths: number[] = [];
  let since: number | undefined;
  const leave = (time: number): void => {
    if (since !== undefined && time > since) {
      lengths.push(time - since);
    }
    since = undefined;
  };
  for (const [first, last] of sightingsOf(track)) {
    if (first === last && isInside([track.x[first] as number, track.y[first] as number], polygon)) {
      lengths.push(0);
    }
  }
  for (let i = 1; i < track.t.length; i += 1) {
    const start = track.t[i - 1] as number;
    const end = track.t[i] as number;
    if (track.afterGap[i]) {
      leave(start);
      continue;
    }
    const from: Point = [track.x[i - 1] as number, track.y[i - 1] as number];
    const to: Point = [track.x[i] as number, track.y[i] as number];
    // Between two crossings the way is on one side of the border: its middle tells on which.
    let before = 0;
    for (const share of [...crossings(from, to, polygon), 1]) {
      const middle = (before + share) / 2;
      const at = start + before * (end - start);
      if (isInside([from[0] + middle * (to[0] - from[0]), from[1] + middle * (to[1] - from[1])], polygon)) {
        since ??= at;
      } else {
        leave(at);
      }
      before = share;
    }
  }
  leave(track.t[track.t.length - 1] ?? 0);
  return lengths;
}

export function isInside([x, y]: Point, polygon: Point[]): boolean {
  let inside = false;
  for (let i = 0, j = polygon.length - 1; i < polygon.length; j = i, i += 1) {
    const [ax, ay] = polygon[i] as Point;
    const [bx, by] = polygon[j] as Point;
    if (ay > y !== by > y && x < ((bx - ax) * (y - ay)) / (by - ay) + ax) {
      inside = !inside;
    }
  }
  return inside;
}

// Shares of the way at which it crosses the border, rising.
function crossings(from: Point, to: Point, polygon: Point[]): number[] {
  const shares: number[] = [];
  const dx = to[0] - from[0];
  const dy = to[1] - from[1];
  if (dx === 0 && dy === 0) {
    return shares;
  }
  for (let i = 0, j = polygon.length - 1; i < polygon.length; j = i, i += 1) {
    const a = polygon[i] as Point;
    const b = polygon[j] as Point;
    // The side of the way on which each end of the edge lies. One crossing too many does no harm.
    const sideA = dx * (a[1] - from[1]) - dy * (a[0] - from[0]);
    const sideB = dx * (b[1] - from[1]) - dy * (b[0] - from[0]);
    if (sideA * sideB <= 0 && sideA !== sideB) {
      const along = sideA / (sideA - sideB);
      const at: Point = [a[0] + along * (b[0] - a[0]), a[1] + along * (b[1] - a[1])];
      const share = Math.abs(dx) > Math.abs(dy) ? (at[0] - from[0]) / dx : (at[1] - from[1]) / dy;
      if (share > 0 && share < 1) {
        shares.push(share);
      }
    }
  }
  return shares.sort((p, q) => p - q);
}
