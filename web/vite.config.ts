import { defineConfig } from 'vite';
import { singleFile } from './singleFile';

export default defineConfig({
  plugins: [singleFile()],
  build: {
    target: ['chrome100', 'firefox113', 'safari16.4'],
    outDir: 'dist',
    emptyOutDir: false,
    cssCodeSplit: false,
    modulePreload: { polyfill: false },
    reportCompressedSize: false,
  },
});
