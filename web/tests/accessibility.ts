import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import type { Page } from 'playwright-core';

const kChecker = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

interface Axe {
  run(options: object): Promise<{ violations: { id: string; impact: string; nodes: { html: string }[] }[] }>;
}

// Puts the accessibility checker into a page that was opened with bypassCSP.
export async function addChecker(page: Page): Promise<void> {
  await page.addScriptTag({ content: kChecker });
}

export async function findings(page: Page): Promise<string[]> {
  return page.evaluate(async () => {
    const checker = (window as unknown as { axe: Axe }).axe;
    const { violations } = await checker.run({ resultTypes: ['violations'] });
    return violations.map(({ id, impact, nodes }) => {
      const places = nodes.map(node => node.html).join(' ');
      return `${impact} ${id}: ${places.slice(0, 300)}`;
    });
  });
}
