import type { Report } from '../report';
import type { Store } from '../store';
import { nextFrame } from '../tracks';

export const kSpeeds = [0.25, 0.5, 1, 2, 4, 8, 16, 32, 64];
const kLongestPause = 250;

// Moves the time while it plays.
export class Player {
  private last = 0;

  constructor(
    private readonly report: Report,
    private readonly store: Store,
  ) {
    store.on(['isPlaying'], ({ isPlaying }) => {
      if (isPlaying) {
        this.last = performance.now();
        requestAnimationFrame(now => this.advance(now));
      }
    });
  }

  toggle(): void {
    const { isPlaying, time } = this.store.state;
    const isAtEnd = !isPlaying && time >= this.report.end;
    this.store.set({ isPlaying: !isPlaying, ...(isAtEnd ? { time: 0 } : {}) });
  }

  moveTo(time: number): void {
    this.store.set({ time: Math.max(0, Math.min(time, this.report.end)) });
  }

  move(by: number): void {
    this.moveTo(this.store.state.time + by);
  }

  // One frame on or back.
  step(direction: 1 | -1): void {
    this.store.set({ isPlaying: false });
    this.moveTo(nextFrame(this.report.frames, this.store.state.time, direction));
  }

  changeSpeed(steps: number): void {
    const at = kSpeeds.indexOf(this.store.state.speed) + steps;
    this.store.set({ speed: kSpeeds[Math.max(0, Math.min(at, kSpeeds.length - 1))] as number });
  }

  private advance(now: number): void {
    const { isPlaying, time, speed, from, to } = this.store.state;
    if (!isPlaying) {
      return;
    }
    const next = time + Math.min(now - this.last, kLongestPause) * speed;
    this.last = now;
    const isOver = next >= this.report.end;
    this.store.set({ time: Math.min(next, this.report.end), isPlaying: !isOver });
    // The timeline turns the page when the time runs out of it.
    if (next > to && time <= to && !isOver) {
      this.store.set({ from: next, to: next + (to - from) });
    }
    requestAnimationFrame(later => this.advance(later));
  }
}
