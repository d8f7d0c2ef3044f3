const kSecond = 1000;
const kMinute = 60 * kSecond;
const kHour = 60 * kMinute;
const kDay = 24 * kHour;

// Turns milliseconds since the start into the clock of the recording and back. The clock has no zone: it is shown as it is.
export class ClockText {
  private readonly start: number;

  constructor(start: string) {
    const parsed = Date.parse(start.endsWith('Z') ? start : `${start}Z`);
    this.start = Number.isFinite(parsed) ? parsed : 0;
  }

  // 10:15:04.600
  exact(time: number): string {
    return this.iso(time).slice(11, 23);
  }

  // 10:15:04.6
  tenths(time: number): string {
    return this.iso(Math.round(time / 100) * 100).slice(11, 21);
  }

  // 10:15:04
  short(time: number): string {
    return this.iso(time).slice(11, 19);
  }

  // 2026-09-14T10:15:04.600
  full(time: number): string {
    return this.iso(time).slice(0, 23);
  }

  date(time: number): string {
    return this.iso(time).slice(0, 10);
  }

  // A label of an axis whose ticks are so far apart.
  tick(time: number, step: number): string {
    const iso = this.iso(time);
    if (step >= kDay) {
      return iso.slice(5, 10);
    }
    if (step >= kMinute) {
      return iso.slice(11, 16);
    }
    return step >= kSecond ? iso.slice(11, 19) : iso.slice(11, 23);
  }

  // Ticks fall on round times of the clock, not of the recording.
  ticks(from: number, to: number, step: number): number[] {
    const result: number[] = [];
    const first = Math.ceil((this.start + from) / step) * step - this.start;
    for (let time = first; time <= to; time += step) {
      result.push(time);
    }
    return result;
  }

  // Reads 10:15, 10:15:04.6 or a count of seconds; nothing if it is neither.
  read(words: string): number | undefined {
    const trimmed = words.trim();
    const clock = /^(\d{1,2}):(\d{2})(?::(\d{2}(?:\.\d+)?))?$/.exec(trimmed);
    if (clock) {
      const ofDay = Number(clock[1]) * kHour + Number(clock[2]) * kMinute + Number(clock[3] ?? 0) * kSecond;
      const midnight = Math.floor(this.start / kDay) * kDay;
      const time = midnight + Math.round(ofDay) - this.start;
      // Just before midnight the recording goes on into the next day.
      return time < -kHour ? time + kDay : time;
    }
    return /^\d+(\.\d+)?$/.test(trimmed) ? Math.round(Number(trimmed) * kSecond) : undefined;
  }

  private iso(time: number): string {
    const moment = new Date(this.start + Math.round(time));
    return Number.isNaN(moment.getTime()) ? '0000-00-00T00:00:00.000Z' : moment.toISOString();
  }
}

// 0.04 s, 12.4 s, 3 min 05 s, 2 h 04 min
export function durationText(milliseconds: number): string {
  const length = Math.abs(milliseconds);
  const sign = milliseconds < 0 ? '−' : '';
  if (length < kMinute) {
    const seconds = length / kSecond;
    return `${sign}${trimmed(seconds, seconds < 1 ? 3 : seconds < 10 ? 2 : 1)} s`;
  }
  const whole = Math.round(length / kSecond);
  if (length < kHour) {
    return `${sign}${Math.floor(whole / 60)} min ${padded(whole % 60)} s`;
  }
  const minutes = Math.round(whole / 60);
  return `${sign}${Math.floor(minutes / 60)} h ${padded(minutes % 60)} min`;
}

// Smallest round step that leaves at most so many ticks.
export function tickStep(span: number, most: number): number {
  const steps = [
    1, 2, 5, 10, 20, 50, 100, 200, 500,
    ...[1, 2, 5, 10, 15, 30].map(count => count * kSecond),
    ...[1, 2, 5, 10, 15, 30].map(count => count * kMinute),
    ...[1, 2, 3, 6, 12].map(count => count * kHour),
  ]; // prettier-ignore
  const wanted = span / Math.max(1, most);
  const step = steps.find(candidate => candidate >= wanted);
  return step ?? Math.ceil(wanted / kDay) * kDay;
}

// A number with at most so many digits after the point, and no zeros at the end.
export function trimmed(value: number, digits: number): string {
  return String(Number(value.toFixed(digits)));
}

// The same of a number that may be missing: it was no number, so JSON has null.
export function trimmedOrDash(value: number | null | undefined, digits: number): string {
  return typeof value === 'number' ? trimmed(value, digits) : '–';
}

function padded(value: number): string {
  return String(value).padStart(2, '0');
}
