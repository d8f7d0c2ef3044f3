import { icon, type Icon } from './icons';

// Elements are made by name, with text as text: nothing out of a file is ever read as markup.

type Child = Node | string;

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
    made.textContent = options.text;
  }
  if (options.title) {
    made.title = options.title;
  }
  for (const [key, value] of Object.entries(options.attributes ?? {})) {
    made.setAttribute(key, value);
  }
  for (const [event, listener] of Object.entries(options.on ?? {})) {
    made.addEventListener(event, listener);
  }
  made.append(...children);
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
