// Bundles TypeScript that runs in Node: node tests/bundle.mjs FOLDER FILE...
import { build } from 'esbuild';

const [folder, ...files] = process.argv.slice(2);
await build({
  entryPoints: files,
  outdir: folder,
  outExtension: { '.js': '.mjs' },
  bundle: true,
  platform: 'node',
  format: 'esm',
  target: 'node18',
  external: ['playwright-core', 'axe-core', 'esbuild'],
  loader: { '.css': 'empty' },
  logLevel: 'warning',
});
