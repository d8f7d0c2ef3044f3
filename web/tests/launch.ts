import { existsSync } from 'node:fs';
import type { LaunchOptions } from 'playwright-core';

const kPlaces = ['/usr/bin/chromium', '/usr/bin/chromium-browser', '/usr/bin/google-chrome'];

// The browser of the system; CHROMIUM names another.
export function launchOptions(): LaunchOptions {
  const executablePath = process.env['CHROMIUM'] ?? kPlaces.find(place => existsSync(place));
  if (!executablePath) {
    throw new Error('there is no Chromium; install the package chromium or name one in CHROMIUM');
  }
  return { executablePath, args: process.getuid?.() === 0 ? ['--no-sandbox'] : [] };
}
