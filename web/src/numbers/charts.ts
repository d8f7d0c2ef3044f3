import uPlot from 'uplot';
import 'uplot/dist/uPlot.min.css';
import type { ClockText } from '../time';
import { durationText, tickStep } from '../time';
import type { Palette } from '../ui/colours';

const kHeight = 150;
const kFont = '12px system-ui, sans-serif';

// `end` is where the x axis ends; it begins with 0.
interface ChartLook {
  palette: Palette;
  width: number;
  end: number;
}

// Bars over time, or with `steps` a line that keeps its value until the next point.
export function timeChart(
  host: HTMLElement,
  data: [number[], number[]],
  clock: ClockText,
  kind: 'bars' | 'steps',
  look: ChartLook,
): uPlot {
  const paths =
    kind === 'bars' ? uPlot.paths.bars?.({ size: [0.9, 40] }) : uPlot.paths.stepped?.({ align: 1 });
  const labels = (_: uPlot, splits: number[]): string[] => {
    const step = (splits[1] ?? 0) - (splits[0] ?? 0);
    return splits.map(time => clock.tick(time, step));
  };
  const splits = (_: uPlot, __: number, from: number, to: number): number[] => {
    const most = Math.max(2, look.width / 90);
    return clock.ticks(from, to, tickStep(to - from, most));
  };
  return make(host, data, paths, look, { values: labels, splits });
}

export function lengthChart(host: HTMLElement, data: [number[], number[]], look: ChartLook): uPlot {
  const labels = (_: uPlot, splits: number[]): string[] => splits.map(length => durationText(length));
  return make(host, data, uPlot.paths.bars?.({ size: [0.9, 60] }), look, { values: labels, space: 70 });
}

function make(
  host: HTMLElement,
  data: [number[], number[]],
  paths: uPlot.Series.PathBuilder | undefined,
  { palette, width, end }: ChartLook,
  x: uPlot.Axis,
): uPlot {
  const axis: uPlot.Axis = {
    stroke: palette.muted,
    font: kFont,
    grid: { stroke: palette.line, width: 1 },
    ticks: { stroke: palette.line, width: 1, size: 4 },
  };
  const whole = (_: uPlot, splits: number[]): string[] =>
    splits.map(value => (Number.isInteger(value) ? value.toLocaleString('en') : ''));
  return new uPlot(
    {
      width,
      height: kHeight,
      padding: [null, 26, null, null],
      legend: { show: false },
      cursor: { show: false },
      select: { show: false, left: 0, top: 0, width: 0, height: 0 },
      scales: {
        x: { time: false, range: [0, end] },
        y: { range: (_, __, most) => [0, Math.max(1, most * 1.08)] },
      },
      axes: [
        { ...axis, ...x, size: 28 },
        { ...axis, values: whole, size: 44 },
      ],
      series: [
        {},
        {
          stroke: palette.accent,
          fill: `${palette.accent}33`,
          width: 1.5,
          points: { show: false },
          ...(paths ? { paths } : {}),
        },
      ],
    },
    data,
    host,
  );
}
