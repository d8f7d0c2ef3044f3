import type { Page } from 'playwright-core';

// How many pixels of a canvas have a colour of three parts. A copy is read, so that the page's own canvas stays as it is.
export async function countPixels(page: Page, selector: string, colour: number[]): Promise<number> {
  return page.evaluate(
    ([place, parts]) => {
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
      let count = 0;
      for (let i = 0; i < data.length; i += 4) {
        count += Number(parts.every((part, j) => data[i + j] === part));
      }
      return count;
    },
    [selector, colour] as const,
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
