// Runs tests: node tests/run.mjs unit|browser|reports|measure|pictures [ARGUMENT...]
//
// The tests are bundled into a folder of this run's own below node_modules, so that packages are found from there.
// REPORT_TEMPLATE names the page that browser tests fill; without it the page is built first.
import { spawnSync } from 'node:child_process';
import { mkdtempSync, mkdirSync, readdirSync, rmSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { build as bundle } from 'esbuild';
import { build as buildPage } from 'vite';

const web = dirname(dirname(fileURLToPath(import.meta.url)));
const [kind, ...rest] = process.argv.slice(2);

function filesOf(folder) {
  return readdirSync(join(web, 'tests', folder))
    .filter(name => name.endsWith('.ts'))
    .map(name => join(web, 'tests', folder, name));
}

async function bundled(folder) {
  await bundle({
    entryPoints: filesOf(kind),
    outdir: folder,
    outExtension: { '.js': '.mjs' },
    bundle: true,
    platform: 'node',
    format: 'esm',
    target: 'node18',
    external: ['playwright-core', 'axe-core'],
    logLevel: 'warning',
  });
  return readdirSync(folder)
    .filter(name => name.endsWith('.mjs'))
    .map(name => join(folder, name));
}

async function template(folder) {
  if (!process.env.REPORT_TEMPLATE) {
    await buildPage({ root: web, logLevel: 'warn', build: { outDir: folder } });
    process.env.REPORT_TEMPLATE = join(folder, 'report.html');
  }
}

const place = join(web, 'node_modules', '.report-tests');
mkdirSync(place, { recursive: true });
const folder = mkdtempSync(join(place, 'run-'));
let status = 1;
try {
  if (kind !== 'unit') {
    await template(join(folder, 'page'));
  }
  const files = await bundled(join(folder, 'tests'));
  const runner = ['measure', 'pictures'].includes(kind) ? [...files, ...rest] : ['--test', ...files];
  status = spawnSync(process.execPath, runner, { stdio: 'inherit' }).status ?? 1;
} finally {
  rmSync(folder, { recursive: true, force: true });
}
process.exit(status);
