import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { shortcutsOf, type Views } from '../../src/shortcuts';

const shortcuts = shortcutsOf({} as Views);

test('no key has two meanings', () => {
  const keys = shortcuts.flatMap(shortcut => shortcut.keys);
  assert.equal(new Set(keys).size, keys.length);
});

// Tests are started in web/.
test('the document has every key of the help', () => {
  const document = readFileSync('../docs/report.md', 'utf8');
  for (const { label, text } of shortcuts) {
    assert.ok(document.includes(`| ${label} | ${text} |`), `docs/report.md lacks: | ${label} | ${text} |`);
  }
});
