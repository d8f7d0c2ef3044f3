import './style.css';
import { load, wordsOf } from './load';
import { buildPage } from './page';
import { applyTheme, preferredTheme } from './ui/theme';
import { element, plain } from './ui/dom';

// A page that cannot show its data says why.
function tell(error: unknown): HTMLElement {
  applyTheme(preferredTheme());
  return element('main', { class: 'failure' }, [
    element('h1', { text: 'This report cannot be shown' }),
    element('p', { text: `It says: ${wordsOf(error)}.` }),
    element('p', {
      text: 'Make it again with scenariomatch report, or ask who gave it to you for a whole copy.',
    }),
  ]);
}

async function start(place: HTMLElement): Promise<void> {
  try {
    const loaded = await load();
    document.title = plain(`${loaded.report.data.title || 'Report'} – ScenarioMatch`);
    place.replaceChildren(buildPage(loaded));
  } catch (error) {
    place.replaceChildren(tell(error));
  }
  performance.mark('shown');
}

const place = document.getElementById('page');
if (place) {
  void start(place);
}
