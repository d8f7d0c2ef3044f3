import type { Store } from '../store';
import { button } from './dom';

type Theme = 'light' | 'dark';

// Follows the system until the switch is used.
export function preferredTheme(): Theme {
  return window.matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light';
}

export function applyTheme(theme: Theme): void {
  document.documentElement.dataset['theme'] = theme;
}

export class ThemeSwitch {
  readonly root: HTMLButtonElement;
  private isChosen = false;

  constructor(private readonly store: Store) {
    this.root = button('', { class: 'quiet' }, () => this.toggle());
    window.matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
      if (!this.isChosen) {
        this.apply(preferredTheme());
      }
    });
    this.apply(store.state.theme);
  }

  toggle(): void {
    this.isChosen = true;
    this.apply(this.store.state.theme === 'dark' ? 'light' : 'dark');
  }

  private apply(theme: Theme): void {
    applyTheme(theme);
    this.store.set({ theme });
    this.root.textContent = theme === 'dark' ? 'Light' : 'Dark';
    this.root.title = `Switch to ${theme === 'dark' ? 'light' : 'dark'} colours (T)`;
  }
}
