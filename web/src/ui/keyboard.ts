// A key of the page: `keys` are values of KeyboardEvent.key.
export interface Shortcut {
  keys: string[];
  label: string;
  text: string;
  act: (event: KeyboardEvent) => void;
}

// Keys work everywhere but where text is typed or an element has a use for them itself.
export function listen(shortcuts: Shortcut[]): void {
  document.addEventListener('keydown', event => {
    if (event.ctrlKey || event.metaKey || event.altKey || isBusy(event)) {
      return;
    }
    const shortcut = shortcuts.find(({ keys }) => keys.includes(event.key));
    if (shortcut) {
      event.preventDefault();
      shortcut.act(event);
    }
  });
}

function isBusy(event: KeyboardEvent): boolean {
  const { target } = event;
  if (!(target instanceof HTMLElement) || document.querySelector('dialog[open]')) {
    return target instanceof HTMLElement;
  }
  if (target instanceof HTMLInputElement) {
    const arrows = event.key.startsWith('Arrow') || ['Home', 'End', 'PageUp', 'PageDown'].includes(event.key);
    return target.type !== 'range' || arrows;
  }
  if (target instanceof HTMLSelectElement || target instanceof HTMLTextAreaElement) {
    return true;
  }
  const isPressed = event.key === ' ' || event.key === 'Enter';
  return isPressed && target.matches('button, summary, a');
}
