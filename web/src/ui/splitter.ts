import { element } from './dom';

const kLimits = { least: 15, most: 80 };
const kKeyStep = 3;

// A bar that can be dragged, or moved by keys, between what is above and what is below. The share of the lower part goes
// into the style property --lower of the parent.
export function splitter(parent: HTMLElement, label: string, share: number): HTMLElement {
  const bar = element('div', {
    class: 'splitter',
    attributes: {
      role: 'separator',
      tabindex: '0',
      'aria-orientation': 'horizontal',
      'aria-label': label,
      'aria-valuemin': String(kLimits.least),
      'aria-valuemax': String(kLimits.most),
    },
  });
  let lower = share;
  const set = (value: number): void => {
    lower = Math.max(kLimits.least, Math.min(value, kLimits.most));
    parent.style.setProperty('--lower', `${lower}%`);
    bar.setAttribute('aria-valuenow', String(Math.round(lower)));
  };
  bar.addEventListener('pointerdown', event => bar.setPointerCapture(event.pointerId));
  bar.addEventListener('pointermove', event => {
    if (bar.hasPointerCapture(event.pointerId)) {
      const { top, height } = parent.getBoundingClientRect();
      set((1 - (event.clientY - top) / height) * 100);
    }
  });
  bar.addEventListener('keydown', event => {
    const step = { ArrowUp: kKeyStep, ArrowDown: -kKeyStep }[event.key];
    if (step !== undefined) {
      event.preventDefault();
      event.stopPropagation();
      set(lower + step);
    }
  });
  set(share);
  return bar;
}
