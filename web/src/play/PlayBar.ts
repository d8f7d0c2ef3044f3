import type { Report } from '../report';
import type { Store } from '../store';
import { choice, element, tool } from '../ui/dom';
import { icon } from '../ui/icons';
import { kSpeeds, type Player } from './Player';

const kTrails: [string, string][] = [
  ['0', 'No trails'],
  ['5000', 'Trails 5 s'],
  ['10000', 'Trails 10 s'],
  ['30000', 'Trails 30 s'],
  ['120000', 'Trails 2 min'],
];

// Play, step, speed and the place in time.
export class PlayBar {
  readonly root: HTMLElement;
  private readonly play: HTMLButtonElement;
  private readonly slider: HTMLInputElement;
  private readonly clock = element('output', { class: 'clock' });
  private readonly speed: HTMLSelectElement;

  constructor(
    private readonly report: Report,
    store: Store,
    player: Player,
  ) {
    this.play = tool('play', 'Play (space)', () => player.toggle());
    this.play.classList.add('play');
    this.slider = element('input', {
      attributes: { type: 'range', min: '0', max: String(report.end), step: '1', 'aria-label': 'Time' },
    });
    this.slider.addEventListener('input', () => player.moveTo(this.slider.valueAsNumber));
    this.speed = choice(
      'Speed',
      kSpeeds.map(speed => [String(speed), `${speed}×`]),
      value => store.set({ speed: Number(value) }),
    );
    const trails = choice('Trails', kTrails, value => store.set({ trail: Number(value) }));
    trails.value = String(store.state.trail);
    this.root = element('div', { class: 'play-bar', attributes: { role: 'group', 'aria-label': 'Play' } }, [
      tool('back', 'Back one frame (,)', () => player.step(-1)),
      this.play,
      tool('forward', 'On one frame (.)', () => player.step(1)),
      this.slider,
      this.clock,
      this.speed,
      trails,
    ]);
    store.on(['time', 'isPlaying', 'speed'], state => this.update(state.time, state.isPlaying, state.speed));
    this.update(store.state.time, store.state.isPlaying, store.state.speed);
  }

  private update(time: number, isPlaying: boolean, speed: number): void {
    const label = isPlaying ? 'Pause (space)' : 'Play (space)';
    this.play.replaceChildren(icon(isPlaying ? 'pause' : 'play'));
    this.play.title = label;
    this.play.setAttribute('aria-label', label);
    const text = this.report.clock.exact(time);
    this.clock.textContent = text;
    this.slider.value = String(time);
    this.slider.setAttribute('aria-valuetext', text);
    this.slider.style.setProperty('--share', String(time / this.report.end));
    this.speed.value = String(speed);
  }
}
