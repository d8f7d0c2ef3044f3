import { element } from './dom';

export interface Tab {
  name: string;
  label: string;
  content: HTMLElement;
  show?: () => void;
  hide?: () => void;
}

// One of several panels, chosen by tabs; arrow keys move between the tabs.
export class Tabs {
  readonly root: HTMLElement;
  private readonly buttons: HTMLButtonElement[];
  private readonly panels: HTMLElement[];
  private active = -1;

  constructor(
    private readonly tabs: Tab[],
    label: string,
  ) {
    this.buttons = tabs.map((tab, i) => {
      const made = element('button', {
        class: 'tab',
        text: tab.label,
        attributes: { role: 'tab', id: `tab-${tab.name}`, 'aria-controls': `panel-${tab.name}` },
        on: { click: () => this.choose(i), keydown: event => this.key(event as KeyboardEvent) },
      });
      made.type = 'button';
      return made;
    });
    this.panels = tabs.map(tab =>
      element(
        'div',
        {
          class: `panel panel-${tab.name}`,
          attributes: { role: 'tabpanel', id: `panel-${tab.name}`, 'aria-labelledby': `tab-${tab.name}` },
        },
        [tab.content],
      ),
    );
    const list = element('div', { class: 'tab-list', attributes: { role: 'tablist', 'aria-label': label } });
    list.append(...this.buttons);
    this.root = element('section', { class: 'tabs', attributes: { 'aria-label': label } }, [
      list,
      ...this.panels,
    ]);
    this.choose(0);
  }

  choose(index: number): void {
    if (index === this.active || !this.tabs[index]) {
      return;
    }
    this.tabs[this.active]?.hide?.();
    this.active = index;
    this.buttons.forEach((tab, i) => {
      tab.setAttribute('aria-selected', String(i === index));
      tab.tabIndex = i === index ? 0 : -1;
    });
    this.panels.forEach((panel, i) => {
      panel.hidden = i !== index;
    });
    this.tabs[index].show?.();
  }

  private key(event: KeyboardEvent): void {
    const step = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    if (step !== undefined) {
      event.preventDefault();
      event.stopPropagation();
      const next = (this.active + step + this.tabs.length) % this.tabs.length;
      this.choose(next);
      this.buttons[next]?.focus();
    }
  }
}
