import { chromium, type Browser, type BrowserContextOptions, type Page } from 'playwright-core';
import { launchOptions } from './launch';

export interface Opened {
  page: Page;
  problems: string[];
}

export function launch(): Promise<Browser> {
  return chromium.launch(launchOptions());
}

// Opens a page as a file; whatever it complains of or asks the network for is a problem.
export async function openPage(
  browser: Browser,
  file: string,
  options: BrowserContextOptions = {},
): Promise<Opened> {
  const page = await browser.newPage({ viewport: { width: 1280, height: 800 }, ...options });
  const problems: string[] = [];
  page.on('pageerror', error => problems.push(error.message));
  page.on('dialog', dialog => {
    problems.push(`dialog ${dialog.message()}`);
    void dialog.dismiss();
  });
  page.on('console', message => {
    if (message.type() === 'error' || message.type() === 'warning') {
      problems.push(message.text());
    }
  });
  page.on('request', request => {
    if (!/^(file|data|blob):/.test(request.url())) {
      problems.push(`asked for ${request.url()}`);
    }
  });
  await page.goto(`file://${file}`);
  await page.waitForSelector('.page, .failure');
  return { page, problems };
}
