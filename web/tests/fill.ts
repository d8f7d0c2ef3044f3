import { gzipSync } from 'node:zlib';

export const kDataPlace = '<!-- scenariomatch:data -->';

export interface Parts {
  data?: unknown;
  tracks?: unknown;
  why?: unknown;
}

// Puts data into the page as the program does.
export function fill(template: string, parts: Parts): string {
  const elements = Object.entries({
    'report-data': parts.data,
    'report-tracks': parts.tracks,
    'report-why': parts.why,
  })
    .filter(([, value]) => value !== undefined)
    .map(([id, value]) => carrier(id, packed(value)));
  return template.replace(kDataPlace, () => elements.join('\n'));
}

export function carrier(id: string, text: string): string {
  return `<script type="text/plain" id="${id}">${text}</script>`;
}

export function packed(value: unknown): string {
  return gzipSync(JSON.stringify(value)).toString('base64');
}
