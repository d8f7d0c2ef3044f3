// Checks that data has the shape that the page relies on. A report may be cut off, edited or of another version:
// what is wrong is said with its place, once, instead of failing somewhere in the page.

export class DataProblem extends Error {}

type Fields = Record<string, unknown>;

export function fields(value: unknown, place: string): Fields {
  if (typeof value !== 'object' || value === null || Array.isArray(value)) {
    throw new DataProblem(`${place} is no object`);
  }
  return value as Fields;
}

export function list(value: unknown, place: string): unknown[] {
  if (!Array.isArray(value)) {
    throw new DataProblem(`${place} is no list`);
  }
  return value;
}

export function text(value: unknown, place: string): string {
  if (typeof value !== 'string') {
    throw new DataProblem(`${place} is no text`);
  }
  return value;
}

export function number(value: unknown, place: string): number {
  if (typeof value !== 'number' || !Number.isFinite(value)) {
    throw new DataProblem(`${place} is no number`);
  }
  return value;
}

export function numbers(value: unknown, place: string): number[] {
  const entries = list(value, place);
  // Words for a place are made where something is wrong, not for each of a million numbers.
  const wrong = entries.findIndex(entry => typeof entry !== 'number' || !Number.isFinite(entry));
  if (wrong >= 0) {
    number(entries[wrong], `${place}[${wrong}]`);
  }
  return entries as number[];
}

// Numbers, or null for what is no number.
export function numbersOrNull(value: unknown, place: string): (number | null)[] {
  const entries = list(value, place);
  const wrong = entries.findIndex(entry => entry !== null && !Number.isFinite(entry));
  if (wrong >= 0) {
    number(entries[wrong], `${place}[${wrong}]`);
  }
  return entries as (number | null)[];
}

export function texts(value: unknown, place: string): string[] {
  return list(value, place).map((entry, i) => text(entry, `${place}[${i}]`));
}

// All numbers of a list name entries of another one, or none with -1.
export function indexes(values: number[], size: number, place: string): void {
  const wrong = values.findIndex(entry => !Number.isInteger(entry) || entry < -1 || entry >= size);
  if (wrong >= 0) {
    index(values[wrong], size, `${place}[${wrong}]`);
  }
}

// A number that names an entry of a list, or -1 for none.
export function index(value: unknown, size: number, place: string): number {
  const entry = number(value, place);
  if (!Number.isInteger(entry) || entry < -1 || entry >= size) {
    throw new DataProblem(`${place} is ${entry}, beyond the ${size} that there are`);
  }
  return entry;
}

export function optional<T>(value: unknown, otherwise: T, read: (value: unknown) => T): T {
  return value === undefined || value === null ? otherwise : read(value);
}
