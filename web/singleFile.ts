import { createHash } from 'node:crypto';
import type { Plugin } from 'vite';

export const kDataPlace = '<!-- scenariomatch:data -->';

// Where Vite puts references to the script and the style into the head.
const kScript = /\s*<script type="module"[^>]*><\/script>/;
const kStyle = /\s*<link rel="stylesheet"[^>]*>/;

// Makes one file of the page: script and style move into it, and a policy lets nothing else run or load.
export function singleFile(): Plugin {
  return {
    name: 'single-file',
    enforce: 'post',
    generateBundle(_options, bundle) {
      let script = '';
      let style = '';
      for (const [name, output] of Object.entries(bundle)) {
        if (output.type === 'chunk') {
          script += output.code.trim();
        } else if (name.endsWith('.css')) {
          style += String(output.source).trim();
        } else {
          continue;
        }
        delete bundle[name];
      }
      const page = bundle['index.html'];
      if (page?.type !== 'asset') {
        throw new Error('there is no page to put the script into');
      }
      delete bundle['index.html'];
      this.emitFile({
        type: 'asset',
        fileName: 'report.html',
        source: inlined(String(page.source), script, style),
      });
    },
  };
}

function inlined(page: string, script: string, style: string): string {
  const code = script.replaceAll('</script', '<\\/script').replaceAll('<!--', '<\\!--');
  const html = page
    .replace(kScript, '')
    .replace(kStyle, '')
    .replace('</head>', () => `  ${policy(code, style)}\n    <style>${style}</style>\n  </head>`)
    .replace('</body>', () => `  <script type="module">${code}</script>\n  </body>`);
  if (html.split(kDataPlace).length !== 2) {
    throw new Error(`the page must say ${kDataPlace} once`);
  }
  return html;
}

function policy(script: string, style: string): string {
  const rules = [
    "default-src 'none'",
    `script-src '${digest(script)}'`,
    `style-src '${digest(style)}'`,
    'img-src data: blob:',
    "base-uri 'none'",
    "form-action 'none'",
  ];
  return `<meta http-equiv="Content-Security-Policy" content="${rules.join('; ')}" />`;
}

function digest(text: string): string {
  return `sha256-${createHash('sha256').update(text).digest('base64')}`;
}
