import type { Lane, LaneGroup } from './lanes';

interface Place {
  group: LaneGroup;
  top: number;
  height: number;
  isOpen: boolean;
}

// Where a line of the timeline stands, from the top of the first: the head of a group, a lane, or the line that stands
// for the lanes without events.
export type Line =
  | ({ kind: 'group' } & Place)
  | ({ kind: 'empty' } & Place)
  | ({ kind: 'lane'; lane: Lane } & Place);

export const kHeights = { group: 24, lane: 21, row: 14, pad: 6 };

export function layOut(groups: LaneGroup[], folded: Set<string>, opened: Set<string>): Line[] {
  const lines: Line[] = [];
  const top = (): number => totalHeight(lines);
  for (const group of groups) {
    const isOpen = !folded.has(group.key);
    lines.push({ kind: 'group', group, top: top(), height: kHeights.group, isOpen });
    if (!isOpen) {
      continue;
    }
    const hasOpenEmpty = opened.has(emptyKey(group));
    for (const lane of group.lanes) {
      lines.push(laneLine(group, lane, top(), opened));
    }
    if (group.empty.length > 0) {
      lines.push({ kind: 'empty', group, top: top(), height: kHeights.lane, isOpen: hasOpenEmpty });
    }
    for (const lane of hasOpenEmpty ? group.empty : []) {
      lines.push(laneLine(group, lane, top(), opened));
    }
  }
  return lines;
}

export function emptyKey(group: LaneGroup): string {
  return `empty ${group.key}`;
}

function laneLine(group: LaneGroup, lane: Lane, top: number, opened: Set<string>): Line {
  const isOpen = opened.has(lane.key) && lane.rows > 1;
  const height = isOpen ? lane.rows * kHeights.row + kHeights.pad : kHeights.lane;
  return { kind: 'lane', group, lane, top, height, isOpen };
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
  const inset = line.kind !== 'lane' ? 9 : line.lane.actor >= 0 ? 8 : 4;
  return { top: line.top + inset, height: line.height - 2 * inset };
}
