// Which rows of a long list exist as elements.
export interface RowWindow {
  first: number;
  last: number;
}

const kSpare = 6;

export function rowsInView(scrollTop: number, height: number, rowHeight: number, count: number): RowWindow {
  const first = Math.max(0, Math.floor(scrollTop / rowHeight) - kSpare);
  const last = Math.min(count, Math.ceil((scrollTop + height) / rowHeight) + kSpare);
  return { first: Math.min(first, count), last };
}

// Where the list must stand so that a row is in view; it stays where it is when it is already.
export function scrollFor(row: number, scrollTop: number, height: number, rowHeight: number): number {
  const top = row * rowHeight;
  if (top < scrollTop) {
    return top;
  }
  return top + rowHeight > scrollTop + height ? top + rowHeight - height : scrollTop;
}
