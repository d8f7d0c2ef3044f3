import type { Point } from '../data';
import type { Report } from '../report';
import type { Store } from '../store';
import { placeAt } from '../tracks';
import { Surface } from '../ui/canvas';
import { readPalette, type Palette } from '../ui/colours';
import { element, tool } from '../ui/dom';
import { isForPage, onDrag } from '../ui/drag';
import { actorsAt, drawActors } from './drawActors';
import { drawBackground, drawScaleBar, drawScene } from './drawScene';
import { legend } from './legend';
import { boxOf, fit, panned, toScreen, zoomed, type Box, type Projection } from './projection';

const kMargin = 36;
const kWheelStep = 0.0015;
const kPickRadius = 14;
const kPictureStrength = { light: 0.85, dark: 0.5 };

// The scene from above, with everybody who is in it at the time of the play bar.
export class PlanView {
  readonly root: HTMLElement;
  private readonly surface: Surface;
  private readonly box: Box;
  private palette: Palette = readPalette();
  private projection: Projection;
  private fitScale = 1;
  private isTouched = false;
  private down: boolean;
  private places: { actor: number; at: Point }[] = [];
  private pinned = -1;
  private readonly said = element('p', { class: 'unseen', attributes: { role: 'status' } });
  private picture: HTMLImageElement | undefined;

  constructor(
    private readonly report: Report,
    private readonly store: Store,
  ) {
    this.down = report.data.scene.down;
    this.box = boxOf(allPoints(report)) ?? { left: 0, right: 10, low: 0, high: 10 };
    this.projection = fit(this.box, this.down, 100, 100, kMargin);
    const stage = element('div', {
      class: 'stage',
      attributes: {
        tabindex: '0',
        role: 'application',
        'aria-label':
          'Plan of the scene. Arrow keys move it, plus and minus zoom, F fits it, A goes from one to the next who is there.',
      },
    });
    this.root = element('section', { class: 'plan', attributes: { 'aria-label': 'Plan' } }, [
      stage,
      legend(report),
      this.tools(),
      ...this.notes(),
      this.said,
    ]);
    this.surface = new Surface(
      stage,
      context => this.paint(context),
      () => this.resize(),
    );
    this.listen(stage);
    this.loadPicture();
    store.on(['time', 'selected', 'trail'], () => this.surface.redraw());
    store.on(['selected'], () => this.reveal());
    store.on(['theme'], () => this.refresh());
  }

  private refresh(): void {
    this.palette = readPalette();
    this.surface.drawNow();
  }

  layOnPaper(width: number, height: number): void {
    this.palette = readPalette();
    this.surface.hold(width, height);
  }

  layOnScreen(): void {
    this.palette = readPalette();
    this.surface.letGo();
  }

  fit(): void {
    this.isTouched = false;
    this.resize();
    this.surface.redraw();
  }

  mirror(): void {
    this.down = !this.down;
    this.projection = { ...this.projection, down: this.down };
    this.surface.redraw();
  }

  private tools(): HTMLElement {
    return element(
      'div',
      { class: 'plan-tools', attributes: { role: 'group', 'aria-label': 'Plan tools' } },
      [
        tool('plus', 'Zoom in', () => this.zoom(1.4)),
        tool('minus', 'Zoom out', () => this.zoom(1 / 1.4)),
        tool('fit', 'Fit the plan (F)', () => this.fit()),
        tool('mirror', 'Turn the plan upside down (M)', () => this.mirror()),
      ],
    );
  }

  private notes(): HTMLElement[] {
    const missing: string[] = [];
    if (this.report.data.scene.objects.length === 0) {
      missing.push('The scene has no zones, walls or equipment.');
    }
    if (this.report.data.actors.length === 0) {
      missing.push('Nobody was tracked.');
    } else if (this.report.tracks.length === 0) {
      missing.push('There are no tracks to draw.');
    }
    return missing.length > 0 ? [element('p', { class: 'plan-note', text: missing.join(' ') })] : [];
  }

  private loadPicture(): void {
    const { background } = this.report.data.scene;
    if (background) {
      const picture = new Image();
      picture.addEventListener('load', () => {
        this.picture = picture;
        this.surface.redraw();
      });
      // The program has looked at the first bytes only.
      picture.addEventListener('error', () =>
        this.root.append(
          element('p', {
            class: 'problem plan-problem',
            text: 'The picture of the scene cannot be shown: this browser cannot decode it.',
            attributes: { role: 'alert' },
          }),
        ),
      );
      picture.src = background.image;
    }
  }

  private listen(stage: HTMLElement): void {
    onDrag(stage, {
      move: (dx, dy) => {
        this.isTouched = true;
        this.projection = panned(this.projection, dx, dy);
        this.surface.redraw();
      },
      click: event => {
        const bounds = stage.getBoundingClientRect();
        this.pick([event.clientX - bounds.left, event.clientY - bounds.top]);
      },
    });
    stage.addEventListener(
      'wheel',
      event => {
        if (!isForPage(event)) {
          event.preventDefault();
          this.zoom(Math.exp(-event.deltaY * kWheelStep), [event.offsetX, event.offsetY]);
        }
      },
      { passive: false },
    );
    stage.addEventListener('keydown', event => this.key(event));
  }

  private key(event: KeyboardEvent): void {
    const steps: Record<string, Point> = {
      ArrowLeft: [40, 0],
      ArrowRight: [-40, 0],
      ArrowUp: [0, 40],
      ArrowDown: [0, -40],
    };
    const step = steps[event.key];
    if (step) {
      this.isTouched = true;
      this.projection = panned(this.projection, step[0], step[1]);
      this.surface.redraw();
    } else if (event.key === '+' || event.key === '=') {
      this.zoom(1.25);
    } else if (event.key === '-') {
      this.zoom(0.8);
    } else {
      return;
    }
    event.preventDefault();
    event.stopPropagation();
  }

  private zoom(factor: number, at?: Point): void {
    this.isTouched = true;
    const { width, height } = this.projection;
    this.projection = zoomed(this.projection, factor, at ?? [width / 2, height / 2], this.fitScale);
    this.surface.redraw();
  }

  // A click on somebody keeps the highlight there; one beside lets it go.
  private pick(at: Point): void {
    let best = kPickRadius;
    let found = -1;
    for (const { actor, at: place } of this.places) {
      const distance = Math.hypot(place[0] - at[0], place[1] - at[1]);
      if (distance < best) {
        best = distance;
        found = actor;
      }
    }
    this.pin(found);
  }

  private pin(actor: number): void {
    this.pinned = actor;
    this.said.textContent = actor < 0 ? '' : `${this.report.actorName(actor)} has the ring.`;
    this.surface.redraw();
  }

  // Goes from one to the next of those who are there.
  pinNext(step: number): void {
    const present = actorsAt(this.report, this.store.state.time).map(({ actor }) => actor);
    if (present.length === 0) {
      this.pin(-1);
      this.said.textContent = 'Nobody is there.';
      return;
    }
    const at = present.indexOf(this.pinned);
    const next = at < 0 ? (step > 0 ? 0 : -1) : at + step;
    this.pin(present.at(next % present.length) as number);
  }

  unpin(): void {
    this.pin(-1);
  }

  private resize(): void {
    const { width, height } = this.surface;
    const fitting = fit(this.box, this.down, width, height, kMargin);
    this.fitScale = fitting.scale;
    this.projection = this.isTouched ? { ...this.projection, width, height } : fitting;
  }

  private paint(context: CanvasRenderingContext2D): void {
    const { palette, projection } = this;
    const { scene } = this.report.data;
    const marked = this.marked();
    context.fillStyle = palette.sunken;
    context.fillRect(0, 0, projection.width, projection.height);
    if (this.picture && scene.background) {
      const strength = this.store.state.theme === 'dark' ? kPictureStrength.dark : kPictureStrength.light;
      drawBackground(context, this.picture, scene.background.placement, projection, strength);
    }
    drawScene(context, scene.objects, { palette, projection, highlighted: marked.scene });
    this.places = drawActors(context, this.report, {
      palette,
      projection,
      time: this.store.state.time,
      trail: this.store.state.trail,
      highlighted: marked.actors,
    });
    drawScaleBar(context, projection, palette, scene.unit);
  }

  // Brings those who take part in the selected event into view where the plan was moved away from them.
  private reveal(): void {
    const { width, height } = this.projection;
    const { actors, scene } = this.marked();
    const places = [
      ...[...actors].flatMap(actor => {
        const track = this.report.tracks[actor];
        const place = track && placeAt(track, this.store.state.time);
        return place ? [place] : [];
      }),
      ...[...scene].flatMap(index => this.report.data.scene.objects[index]?.shape ?? []),
    ];
    const box = boxOf(places);
    const isOutside = ([x, y]: Point): boolean => x < 0 || y < 0 || x > width || y > height;
    if (this.isTouched && box && places.some(place => isOutside(toScreen(this.projection, place)))) {
      const centre: Point = [(box.left + box.right) / 2, (box.low + box.high) / 2];
      const { scale } = fit(box, this.down, width, height, kMargin);
      this.projection = { ...this.projection, centre, scale: Math.min(this.projection.scale, scale) };
    }
  }

  private marked(): { actors: Set<number>; scene: Set<number> } {
    const actors = new Set<number>(this.pinned >= 0 ? [this.pinned] : []);
    const scene = new Set<number>();
    const { selected } = this.store.state;
    if (selected >= 0) {
      for (const participant of this.report.participants(selected)) {
        if (participant.kind === 'actor') {
          actors.add(participant.index);
        } else if (participant.kind === 'scene') {
          scene.add(participant.index);
        }
      }
    }
    return { actors, scene };
  }
}

function* allPoints(report: Report): Generator<Point> {
  for (const { shape } of report.data.scene.objects) {
    yield* shape;
  }
  const { background } = report.data.scene;
  if (background) {
    const [left, low, right, high] = background.placement;
    yield [left, low];
    yield [right, high];
  }
  for (const track of report.tracks) {
    for (let i = 0; i < track.t.length; i += 1) {
      yield [track.x[i] as number, track.y[i] as number];
    }
  }
}
