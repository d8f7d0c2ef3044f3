import type { Point } from '../data';
import type { Track } from '../tracks';

// Lengths of the stays of an actor inside a polygon. A stay ends where the actor leaves it or is not seen any more.
export function stays(track: Track, polygon: Point[]): number[] {
  const lengths: number[] = [];
  let since: number | undefined;
  const leave = (time: number): void => {
    if (since !== undefined && time > since) {
      lengths.push(time - since);
    }
    since = undefined;
  };
  for (let i = 0; i < track.t.length; i += 1) {
    const time = track.t[i] as number;
    const here: Point = [track.x[i] as number, track.y[i] as number];
    if (i === 0 || track.afterGap[i]) {
      leave(i === 0 ? time : (track.t[i - 1] as number));
      since = isInside(here, polygon) ? time : undefined;
      continue;
    }
    const before: Point = [track.x[i - 1] as number, track.y[i - 1] as number];
    const start = track.t[i - 1] as number;
    for (const share of crossings(before, here, polygon)) {
      const at = start + share * (time - start);
      if (since === undefined) {
        since = at;
      } else {
        leave(at);
      }
    }
    // A track along the border crosses it in ways that no count gets right: the key points decide.
    if (isInside(here, polygon)) {
      since ??= time;
    } else {
      leave(time);
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
    // The side of the way on which each end of the edge lies; an edge counts where its ends lie on different ones.
    const sideA = dx * (a[1] - from[1]) - dy * (a[0] - from[0]);
    const sideB = dx * (b[1] - from[1]) - dy * (b[0] - from[0]);
    if (sideA > 0 !== sideB > 0) {
      const along = sideA / (sideA - sideB);
      const at: Point = [a[0] + along * (b[0] - a[0]), a[1] + along * (b[1] - a[1])];
      const share = Math.abs(dx) > Math.abs(dy) ? (at[0] - from[0]) / dx : (at[1] - from[1]) / dy;
      if (share > 0 && share <= 1) {
        shares.push(share);
      }
    }
  }
  return shares.sort((p, q) => p - q);
}
