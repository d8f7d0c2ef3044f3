// What the views share. `shown` lists the events that pass the filter, in the order of the list.
export interface State {
  time: number;
  isPlaying: boolean;
  speed: number;
  trail: number;
  selected: number;
  from: number;
  to: number;
  shown: Int32Array;
  isShown: Uint8Array;
  theme: 'light' | 'dark';
}

type Key = keyof State;
type Listener = (state: Readonly<State>) => void;

// Tells its listeners once per drawn frame what has changed since.
export class Store {
  private readonly listeners: { keys: Key[]; listener: Listener }[] = [];
  private readonly changed = new Set<Key>();
  private isScheduled = false;

  constructor(readonly state: Readonly<State>) {}

  set(part: Partial<State>): void {
    for (const key of Object.keys(part) as Key[]) {
      if (this.state[key] !== part[key]) {
        this.changed.add(key);
      }
    }
    Object.assign(this.state, part);
    if (this.changed.size > 0 && !this.isScheduled) {
      this.isScheduled = true;
      requestAnimationFrame(() => this.flush());
    }
  }

  on(keys: Key[], listener: Listener): void {
    this.listeners.push({ keys, listener });
  }

  flush(): void {
    this.isScheduled = false;
    const changed = new Set(this.changed);
    this.changed.clear();
    for (const { keys, listener } of this.listeners) {
      if (keys.some(key => changed.has(key))) {
        listener(this.state);
      }
    }
  }
}
