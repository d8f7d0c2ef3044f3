import type { LoadedReport } from './load';
import { ListView } from './list/ListView';
import { NumbersView } from './numbers/NumbersView';
import { PlanView } from './plan/PlanView';
import { PlayBar } from './play/PlayBar';
import { Player } from './play/Player';
import { preparePrint } from './print';
import { shortcutsOf, type Views } from './shortcuts';
import { Store } from './store';
import { durationText } from './time';
import { TimelineView } from './timeline/TimelineView';
import { whole } from './timeline/span';
import { Announcer } from './ui/announcer';
import { button, element } from './ui/dom';
import { Help } from './ui/help';
import { levelLegend } from './ui/levels';
import { listen } from './ui/keyboard';
import { splitter } from './ui/splitter';
import { Tabs } from './ui/tabs';
import { preferredTheme, applyTheme, ThemeSwitch } from './ui/theme';
import { WhyView } from './why/WhyView';

const kTrail = 10_000;
const kTimelineShare = 40;

// Puts the views together.
export function buildPage({ report, problems, loadWhy }: LoadedReport): HTMLElement {
  const theme = preferredTheme();
  applyTheme(theme);
  const store = new Store({
    time: 0,
    isPlaying: false,
    speed: 1,
    trail: kTrail,
    selected: -1,
    ...whole(report.end),
    shown: new Int32Array(0),
    isShown: new Uint8Array(report.count),
    theme,
  });
  const player = new Player(report, store);
  const plan = new PlanView(report, store);
  const timeline = new TimelineView(report, store);
  const list = new ListView(report, store);
  const why = new WhyView(report, store, loadWhy);
  const numbers = new NumbersView(report, store);
  const themes = new ThemeSwitch(store);
  const tabs = new Tabs(
    [
      { name: 'events', label: 'Events', content: list.root },
      { name: 'why', label: 'Why', content: why.root, show: () => void why.show(), hide: () => why.hide() },
      {
        name: 'numbers',
        label: 'Numbers',
        content: numbers.root,
        show: () => numbers.show(),
        hide: () => numbers.hide(),
      },
    ],
    'Details',
  );
  const views: Views = { report, store, player, plan, timeline, list, themes, tabs, help: () => help.open() };
  const shortcuts = shortcutsOf(views);
  const help = new Help(shortcuts);
  listen(shortcuts);
  const printed = preparePrint(report, store, plan, timeline);
  const announcer = new Announcer(report, store);
  return element('div', { class: 'page' }, [
    element('header', {}, [
      element('h1', { text: report.data.title || 'Report', title: report.data.title }),
      element('p', { class: 'facts', text: factsOf(report) }),
      levelLegend(report),
      themes.root,
      button('Keys', { class: 'quiet', title: 'Keyboard and pointer (?)' }, () => help.open()),
    ]),
    ...problems.map(text => element('p', { class: 'problem', text, attributes: { role: 'alert' } })),
    mainOf(
      [
        element('div', { class: 'left' }, [plan.root, new PlayBar(report, store, player).root]),
        element('div', { class: 'right' }, [announcer.root, tabs.root]),
      ],
      [timeline.root, printed],
    ),
    help.root,
  ]);
}

function mainOf(upper: HTMLElement[], lower: HTMLElement[]): HTMLElement {
  const main = element('main');
  main.append(...upper, splitter(main, 'Height of the timeline', kTimelineShare), ...lower);
  return main;
}

function factsOf(report: LoadedReport['report']): string {
  const { data, clock } = report;
  const count = (number: number, one: string): string =>
    `${number.toLocaleString('en')} ${one}${number === 1 ? '' : 's'}`;
  return [
    `${clock.date(0)} ${clock.short(0)}`,
    durationText(data.clock.end),
    count(data.actors.length, 'actor'),
    count(report.count, 'event'),
  ].join(' · ');
}
