import { button, element } from './dom';
import type { Shortcut } from './keyboard';

const kMouse: [string, string][] = [
  ['Plan', 'drag to move, wheel to zoom, click somebody to keep the highlight there'],
  ['Timeline', 'drag to move, wheel to zoom in time, shift and wheel to move in time'],
  ['Names of lanes', 'click to open or fold, wheel to scroll'],
  ['Keys on the timeline', '↑ and ↓ choose a line, Enter opens or folds it; ← and → move in time'],
  ['Time axis', 'click or drag to move the play bar'],
  ['Where the page scrolls', 'hold Ctrl for the wheel to zoom'],
];

// All keys, and what the pointer does.
export class Help {
  readonly root: HTMLDialogElement;

  constructor(shortcuts: Shortcut[]) {
    const keys = shortcuts.map(({ label, text }) => row(element('kbd', { text: label }), text));
    const pointer = kMouse.map(([name, text]) => row(name, text));
    const close = button('Close', { class: 'quiet' }, () => this.root.close());
    this.root = element('dialog', { class: 'help', attributes: { 'aria-labelledby': 'help-title' } }, [
      element('div', { class: 'help-head' }, [
        element('h2', { text: 'Keyboard and pointer', attributes: { id: 'help-title' } }),
        close,
      ]),
      element('table', {}, [element('tbody', {}, [...keys, ...pointer])]),
    ]);
  }

  open(): void {
    if (!this.root.open) {
      this.root.showModal();
    }
  }
}

function row(name: HTMLElement | string, text: string): HTMLElement {
  return element('tr', {}, [
    element('th', { attributes: { scope: 'row' } }, [name]),
    element('td', { text }),
  ]);
}
