import type { ListView } from './list/ListView';
import type { PlanView } from './plan/PlanView';
import type { Player } from './play/Player';
import type { Report } from './report';
import type { Store } from './store';
import type { TimelineView } from './timeline/TimelineView';
import type { Shortcut } from './ui/keyboard';
import type { Tabs } from './ui/tabs';
import type { ThemeSwitch } from './ui/theme';

export interface Views {
  report: Report;
  store: Store;
  player: Player;
  plan: PlanView;
  timeline: TimelineView;
  list: ListView;
  themes: ThemeSwitch;
  tabs: Tabs;
  help: () => void;
}

const kStep = 1000;
const kLongStep = 10_000;

// The keys of the page, in the order of the help.
export function shortcutsOf(views: Views): Shortcut[] {
  return [...playKeys(views), ...eventKeys(views), ...viewKeys(views)];
}

function playKeys({ player }: Views): Shortcut[] {
  const length = (event: KeyboardEvent): number => (event.shiftKey ? kLongStep : kStep);
  return [
    key([' '], 'Space', 'Play or pause', () => player.toggle()),
    key([','], ',', 'Back one frame', () => player.step(-1)),
    key(['.'], '.', 'On one frame', () => player.step(1)),
    key(['ArrowLeft'], '←', 'Back one second; ten with shift', event => player.move(-length(event))),
    key(['ArrowRight'], '→', 'On one second; ten with shift', event => player.move(length(event))),
    key(['Home'], 'Home', 'To the beginning', () => player.moveTo(0)),
    key(['End'], 'End', 'To the end', () => player.moveTo(Infinity)),
    key(['['], '[', 'Slower', () => player.changeSpeed(-1)),
    key([']'], ']', 'Faster', () => player.changeSpeed(1)),
  ];
}

function eventKeys({ list, store, timeline, plan, tabs }: Views): Shortcut[] {
  return [
    key(['n', 'j'], 'N', 'Next event of the list', () => list.select(list.neighbour(1))),
    key(['p', 'k'], 'P', 'Previous event of the list', () => list.select(list.neighbour(-1))),
    key(['z'], 'Z', 'Zoom the timeline to the selected event', () => {
      if (store.state.selected >= 0) {
        timeline.showEvent(store.state.selected);
      }
    }),
    key(['Escape'], 'Esc', 'Select nothing', () => {
      store.set({ selected: -1 });
      plan.unpin();
    }),
    key(['a', 'A'], 'A', 'Keep the ring at the next who is there; at the one before with shift', event =>
      plan.pinNext(event.shiftKey ? -1 : 1),
    ),
    key(['/'], '/', 'Search events', () => {
      tabs.choose(0);
      list.focusSearch();
    }),
  ];
}

function viewKeys({ tabs, timeline, plan, themes, help }: Views): Shortcut[] {
  return [
    key(['1'], '1', 'Events', () => tabs.choose(0)),
    key(['2'], '2', 'Why', () => tabs.choose(1)),
    key(['3'], '3', 'Numbers', () => tabs.choose(2)),
    key(['+', '='], '+', 'Zoom in: the timeline, or the plan when it has the focus', () =>
      timeline.zoom(1.5),
    ),
    key(['-'], '−', 'Zoom out', () => timeline.zoom(1 / 1.5)),
    key(['0'], '0', 'All of the timeline', () => timeline.showWhole()),
    key(['e'], 'E', 'Open or fold all groups of the timeline', () => timeline.toggleAll()),
    key(['f'], 'F', 'Fit the plan', () => plan.fit()),
    key(['m'], 'M', 'Turn the plan upside down', () => plan.mirror()),
    key(['t'], 'T', 'Light or dark', () => themes.toggle()),
    key(['?'], '?', 'This help', help),
  ];
}

function key(keys: string[], label: string, text: string, act: (event: KeyboardEvent) => void): Shortcut {
  return { keys, label, text, act };
}
