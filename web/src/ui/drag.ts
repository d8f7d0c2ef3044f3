interface DragActs {
  start?: (event: PointerEvent) => void;
  move: (dx: number, dy: number, event: PointerEvent) => void;
  click: (event: PointerEvent) => void;
}

const kClickRadius = 4;

// Tells drags from clicks on an element.
export function onDrag(target: HTMLElement, acts: DragActs): void {
  let last: PointerEvent | undefined;
  let travelled = 0;
  target.addEventListener('pointerdown', event => {
    if (event.button === 0) {
      last = event;
      travelled = 0;
      target.setPointerCapture(event.pointerId);
      acts.start?.(event);
    }
  });
  target.addEventListener('pointermove', event => {
    if (!last) {
      return;
    }
    travelled += Math.hypot(event.clientX - last.clientX, event.clientY - last.clientY);
    if (travelled > kClickRadius) {
      acts.move(event.clientX - last.clientX, event.clientY - last.clientY, event);
    }
    last = event;
  });
  target.addEventListener('pointerup', event => {
    if (last && travelled <= kClickRadius) {
      acts.click(event);
    }
    last = undefined;
  });
  target.addEventListener('pointercancel', () => {
    last = undefined;
  });
}

// Wheels scroll the page where the page itself scrolls, unless a control key asks for zoom.
export function isForPage(event: WheelEvent): boolean {
  const root = document.documentElement;
  return !event.ctrlKey && !event.metaKey && root.scrollHeight > root.clientHeight + 1;
}
