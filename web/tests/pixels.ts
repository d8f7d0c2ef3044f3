import type { Page } from 'playwright-core';

// How many pixels of a canvas have a colour, and the middle of them in shares of its width and height.
export interface Pixels {
  count: number;
  x: number;
  y: number;
}

// A colour has three parts, each of which may be off by so much. A copy is read, so that the page's own canvas stays as it is.
export async function pixelsLike(page: Page, selector: string, colour: number[], off = 0): Promise<Pixels> {
  return page.evaluate(
    ([place, parts, most]) => {
      const canvas = document.querySelector<HTMLCanvasElement>(place);
      const copy = document.createElement('canvas');
      const context = copy.getContext('2d', { willReadFrequently: true });
      if (!canvas || !context) {
        throw new Error(`there is no ${place}`);
      }
      copy.width = canvas.width;
      copy.height = canvas.height;
      context.drawImage(canvas, 0, 0);
      const { data } = context.getImageData(0, 0, copy.width, copy.height);
      const sum = { count: 0, x: 0, y: 0 };
      for (let i = 0; i < data.length; i += 4) {
        if (parts.every((part, j) => Math.abs((data[i + j] as number) - part) <= most)) {
          sum.count += 1;
          sum.x += ((i / 4) % copy.width) / copy.width;
          sum.y += Math.floor(i / 4 / copy.width) / copy.height;
        }
      }
      return { count: sum.count, x: sum.x / sum.count, y: sum.y / sum.count };
    },
    [selector, colour, off] as const,
  );
}

// The parts of a colour of the style sheet.
export async function colourNamed(page: Page, name: string): Promise<number[]> {
  const text = await page.evaluate(
    property => getComputedStyle(document.documentElement).getPropertyValue(property).trim(),
    `--${name}`,
  );
  return [1, 3, 5].map(at => parseInt(text.slice(at, at + 2), 16));
}

// What a canvas shows, to be compared with what it shows at another time.
export async function pictureOf(page: Page, selector: string): Promise<string> {
  // What is asked for is drawn in the next frame.
  await page.evaluate(
    () => new Promise(resolve => requestAnimationFrame(() => requestAnimationFrame(resolve))),
  );
  return page.evaluate(
    place => document.querySelector<HTMLCanvasElement>(place)?.toDataURL() ?? '',
    selector,
  );
}
