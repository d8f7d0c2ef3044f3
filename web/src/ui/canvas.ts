import { plain } from './dom';

const kPaperDensity = 2;

// A canvas that fills its element and is drawn at most once per frame.
export class Surface {
  readonly canvas = document.createElement('canvas');
  width = 0;
  height = 0;
  private readonly context: CanvasRenderingContext2D;
  private isScheduled = false;
  private isHeld = false;

  constructor(
    readonly host: HTMLElement,
    private readonly paint: (context: CanvasRenderingContext2D) => void,
    private readonly resized: () => void = () => undefined,
  ) {
    const context = this.canvas.getContext('2d');
    if (!context) {
      throw new Error('this browser draws no canvas');
    }
    this.context = context;
    host.append(this.canvas);
    new ResizeObserver(() => this.measure()).observe(host);
  }

  // Draws soon; several calls before that draw once.
  redraw(): void {
    if (!this.isScheduled) {
      this.isScheduled = true;
      requestAnimationFrame(() => {
        this.isScheduled = false;
        this.drawNow();
      });
    }
  }

  // Keeps a size of its own, for paper, until it is let go.
  hold(width: number, height: number): void {
    this.isHeld = true;
    this.resizeTo(width, height, kPaperDensity);
  }

  letGo(): void {
    this.isHeld = false;
    this.measure();
  }

  private measure(): void {
    if (!this.isHeld) {
      this.resizeTo(this.host.clientWidth, this.host.clientHeight, window.devicePixelRatio || 1);
    }
  }

  private resizeTo(width: number, height: number, density: number): void {
    this.width = width;
    this.height = height;
    this.canvas.width = Math.max(1, Math.round(width * density));
    this.canvas.height = Math.max(1, Math.round(height * density));
    this.resized();
    this.drawNow();
  }

  drawNow(): void {
    if (this.width > 0 && this.height > 0) {
      const density = this.canvas.width / this.width;
      this.context.setTransform(density, 0, 0, density, 0, 0);
      this.context.clearRect(0, 0, this.width, this.height);
      this.paint(this.context);
    }
  }
}

// Shortens a text with an ellipsis until it fits.
export function fitted(context: CanvasRenderingContext2D, words: string, width: number): string {
  const text = plain(words);
  if (context.measureText(text).width <= width) {
    return text;
  }
  let low = 0;
  let high = Math.min(text.length, 400);
  while (low < high) {
    const middle = (low + high + 1) >> 1;
    if (context.measureText(`${text.slice(0, middle)}…`).width <= width) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low > 0 ? `${text.slice(0, low)}…` : '';
}
