// A canvas that fills its element and is drawn at most once per frame.
export class Surface {
  readonly canvas = document.createElement('canvas');
  width = 0;
  height = 0;
  private readonly context: CanvasRenderingContext2D;
  private isScheduled = false;

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

  measure(): void {
    const { clientWidth, clientHeight } = this.host;
    const density = window.devicePixelRatio || 1;
    this.width = clientWidth;
    this.height = clientHeight;
    this.canvas.width = Math.max(1, Math.round(clientWidth * density));
    this.canvas.height = Math.max(1, Math.round(clientHeight * density));
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
export function fitted(context: CanvasRenderingContext2D, text: string, width: number): string {
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
