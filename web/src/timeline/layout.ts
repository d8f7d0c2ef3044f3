import type { Lane, LaneGroup } from './lanes';

// Where a line of the timeline stands, from the top of the first.
export type Line =
  | { kind: 'group'; group: LaneGroup; top: number; height: number; isOpen: boolean }
  | { kind: 'lane'; group: LaneGroup; lane: Lane; top: number; height: number; isOpen: boolean };

export const kHeights = { group: 24, lane: 21, row: 14, pad: 6 };

export function layOut(groups: LaneGroup[], folded: Set<string>, opened: Set<string>): Line[] {
  const lines: Line[] = [];
  let top = 0;
  for (const group of groups) {
    const isOpen = !folded.has(group.key);
    lines.push({ kind: 'group', group, top, height: kHeights.group, isOpen });
    top += kHeights.group;
    if (isOpen) {
      for (const lane of group.lanes) {
        const isLaneOpen = opened.has(lane.key) && lane.rows > 1;
        const height = isLaneOpen ? lane.rows * kHeights.row + kHeights.pad : kHeights.lane;
        lines.push({ kind: 'lane', group, lane, top, height, isOpen: isLaneOpen });
        top += height;
      }
    }
  }
  return lines;
}

export function totalHeight(lines: Line[]): number {
  const last = lines[lines.length - 1];
  return last ? last.top + last.height : 0;
}

// The line at a height; nothing below the last.
export function lineAt(lines: Line[], y: number): Line | undefined {
  let low = 0;
  let high = lines.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if ((lines[middle] as Line).top <= y) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  const line = lines[low - 1];
  return line && y >= 0 && y < line.top + line.height ? line : undefined;
}

// Top and height of the bar of the event at a position of a lane.
export function barPlace(line: Line, position: number): { top: number; height: number } {
  if (line.kind === 'lane' && line.isOpen) {
    const row = line.lane.rowOf[position] as number;
    return { top: line.top + kHeights.pad / 2 + row * kHeights.row + 1, height: kHeights.row - 2 };
  }
  const inset = line.kind === 'group' ? 9 : line.lane.actor >= 0 ? 8 : 4;
  return { top: line.top + inset, height: line.height - 2 * inset };
}
