import type { Report } from '../report';
import type { Palette } from '../ui/colours';

export interface Placed {
  left: number;
  right: number;
  middle: number;
  height: number;
}

export interface LinkLook {
  palette: Palette;
  report: Report;
  selected: number;
  place: (event: number) => Placed | undefined;
}

const kDepth = 12;

// A rim round the selected event and its parts, and an arrow from each part to the event that it belongs to.
export function drawLinks(context: CanvasRenderingContext2D, look: LinkLook): void {
  const drawn = new Set<number>();
  const visit = (event: number, depth: number): void => {
    if (drawn.has(event) || depth > kDepth) {
      return;
    }
    drawn.add(event);
    const whole = look.place(event);
    for (const part of look.report.subEvents(event)) {
      const from = part >= 0 ? look.place(part) : undefined;
      if (whole && from) {
        arrow(context, from, whole, look.palette);
      }
      if (part >= 0) {
        visit(part, depth + 1);
      }
    }
    if (whole) {
      rim(context, whole, look.palette, depth === 0);
    }
  };
  visit(look.selected, 0);
}

function rim(context: CanvasRenderingContext2D, place: Placed, palette: Palette, isMain: boolean): void {
  context.strokeStyle = isMain ? palette.ink : palette.accent;
  context.lineWidth = isMain ? 2 : 1.5;
  const gap = isMain ? 2 : 1;
  context.strokeRect(
    place.left - gap,
    place.middle - place.height / 2 - gap,
    Math.max(2, place.right - place.left) + 2 * gap,
    place.height + 2 * gap,
  );
}

function arrow(context: CanvasRenderingContext2D, from: Placed, to: Placed, palette: Palette): void {
  const up = to.middle < from.middle;
  const x0 = (from.left + from.right) / 2;
  const y0 = from.middle + (up ? -1 : 1) * (from.height / 2 + 1);
  const x1 = Math.min(Math.max(x0, to.left + 4), Math.max(to.left + 4, to.right - 4));
  const y1 = to.middle + (up ? 1 : -1) * (to.height / 2 + 3);
  const bend = (y1 - y0) * 0.5;
  context.strokeStyle = palette.accent;
  context.fillStyle = palette.accent;
  context.lineWidth = 1.5;
  context.beginPath();
  context.moveTo(x0, y0);
  context.bezierCurveTo(x0, y0 + bend, x1, y1 - bend, x1, y1);
  context.stroke();
  const tip = up ? 6 : -6;
  context.beginPath();
  context.moveTo(x1, y1);
  context.lineTo(x1 - 4, y1 + tip);
  context.lineTo(x1 + 4, y1 + tip);
  context.closePath();
  context.fill();
}
