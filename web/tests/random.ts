// The same numbers in every run.
export class Random {
  private state: number;

  constructor(seed: number) {
    this.state = seed >>> 0 || 1;
  }

  // From 0 up to, not including, 1.
  next(): number {
    this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
    return this.state / 2 ** 32;
  }

  between(low: number, high: number): number {
    return low + (high - low) * this.next();
  }

  whole(count: number): number {
    return Math.floor(this.next() * count);
  }
}
