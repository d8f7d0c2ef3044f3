import { icon, type Icon } from './icons';

// Elements are made by name, with text as text: nothing out of a file is ever read as markup.

type Child = Node | string;

// Characters that turn the direction of writing round would let a name change how the words after it read.
const kTurning = /[\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]/g;

export function plain(text: string): string {
  return text.replace(kTurning, '\ufffd');
}

interface Options {
  class?: string;
  text?: string;
  title?: string;
  attributes?: Record<string, string>;
  on?: Partial<Record<keyof HTMLElementEventMap, (event: Event) => void>>;
}

export function element<Name extends keyof HTMLElementTagNameMap>(
  name: Name,
  options: Options = {},
  children: Child[] = [],
): HTMLElementTagNameMap[Name] {
  const made = document.createElement(name);
  if (options.class) {
    made.className = options.class;
  }
  if (options.text !== undefined) {
    made.textContent = plain(options.text);
  }
  if (options.title) {
    made.title = plain(options.title);
  }
  for (const [key, value] of Object.entries(options.attributes ?? {})) {
    made.setAttribute(key, plain(value));
  }
  for (const [event, listener] of Object.entries(options.on ?? {})) {
    made.addEventListener(event, listener);
  }
  made.append(...children.map(child => (typeof child === 'string' ? plain(child) : child)));
  return made;
}

export function button(text: string, options: Options, act: () => void): HTMLButtonElement {
  const made = element('button', { ...options, text, on: { click: act } });
  made.type = 'button';
  return made;
}

// A small button with a picture; the label says what it does.
export function tool(name: Icon, label: string, act: () => void): HTMLButtonElement {
  const made = button('', { class: 'tool', title: label, attributes: { 'aria-label': label } }, act);
  made.append(icon(name));
  return made;
}

// Choices are pairs of value and words.
export function choice(
  label: string,
  choices: [string, string][],
  act: (value: string) => void,
): HTMLSelectElement {
  const made = element('select', { attributes: { 'aria-label': label } });
  made.append(...choices.map(([value, text]) => element('option', { text, attributes: { value } })));
  made.addEventListener('change', () => act(made.value));
  return made;
}

export function labelled(text: string, field: HTMLElement): HTMLLabelElement {
  return element('label', { class: 'field' }, [element('span', { text }), field]);
}
