/// The current figure: its kind and revision, the display list for the size of the view, gestures
/// and edits on their way to the engine. At most one drawing and one gesture are under way; what
/// comes meanwhile is added up, so a slow connection drops pictures and not touches.

import { signal } from '@preact/signals-core';
import type {
  Drawing,
  FigureAnswer,
  FigureKind,
  FigureModel,
  FigureTip,
  Gesture,
  PictureFormat,
  SavedFigure,
  Theme,
} from '../../engine/core/protocol';
import { ConnectionLost, type Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';
import { text as t } from '../../texts/texts';
import { type PendingGesture, mergeGesture } from './gestures';
import { TurnedSurface } from './turning';

export interface ViewSize {
  width: number;
  height: number;
  theme: Theme;
}

export class Figure {
  readonly kind = signal<FigureKind>('none');
  readonly drawing = signal<Drawing | null>(null);
  readonly tip = signal<FigureTip | null>(null);
  readonly model = signal<FigureModel | null>(null);
  /// A surface under the finger, which is turned here and not by the engine; `turns` counts its turns.
  turned: TurnedSurface | null = null;
  readonly turns = signal(0);
  readonly saved = signal<SavedFigure[] | null>(null);
  private view: ViewSize = { width: 0, height: 0, theme: 'light' };
  private revision = -1;
  private drawnKey = '';
  private drawingUnderWay = false;
  private gestureUnderWay = false;
  private pending: PendingGesture[] = [];
  private tips = 0;
  private watchers = 0;
  private isHeld = false;
  private turnedUntil = Infinity;
  private drawnRevision = -1;
  private modelUnderWay = false;

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
  ) {
    session.on('figure/changed', (change) => this.changed(change.kind, change.revision));
  }

  async refresh(): Promise<void> {
    this.revision = -1; // a server that was started anew counts anew
    this.take(await this.session.request('figure/get', {}));
  }

  setView(view: ViewSize): void {
    this.view = view;
    void this.draw();
  }

  gesture(gesture: PendingGesture): void {
    this.tip.value = null;
    this.pending = mergeGesture(this.pending, gesture);
    if (this.isHeld && this.kind.value === 'surface') this.turn(gesture);
    else void this.sendGestures();
  }

  /// A finger is put on the figure. What it does to a surface is shown here until `release`, when the
  /// engine is told and draws the exact picture.
  async grab(): Promise<void> {
    if (this.kind.value !== 'surface' || this.isHeld || this.gestureUnderWay) return;
    const { drawing } = this;
    this.isHeld = true;
    try {
      const mesh = await this.session.request('figure/mesh', {});
      if (!this.isHeld || !drawing.value) return;
      this.turnedUntil = Infinity;
      this.turned = new TurnedSurface(mesh, drawing.value.plotArea);
      this.pending.forEach((gesture) => this.turn(gesture));
    } catch {
      this.release(); // the engine turns it then
    }
  }

  release(): void {
    if (!this.isHeld) return;
    this.isHeld = false;
    void this.sendGestures().then(() => {
      this.turnedUntil = this.revision;
      this.letGo();
    });
  }

  /// The engine's picture takes the place of the turned surface when it shows what was done to it.
  private letGo(): void {
    if (this.isHeld || !this.turned || this.drawnRevision < this.turnedUntil) return;
    this.turned = null;
    this.turns.value++;
  }

  private turn(gesture: PendingGesture): void {
    const { width, height } = this.view;
    if (this.turned?.apply(gesture, width, height)) this.turns.value++;
  }

  /// Shows the data tip of the point nearest to the place in the view.
  async tipAt(x: number, y: number): Promise<void> {
    const mine = ++this.tips;
    try {
      const { width, height } = this.view;
      const tip = await this.session.request('figure/tip', { x, y, width, height });
      if (mine === this.tips) this.tip.value = tip;
    } catch {
      /* a tip that fails shows nothing */
    }
  }

  hideTip(): void {
    this.tips++;
    this.tip.value = null;
  }

  async edit(changes: Record<string, unknown>): Promise<void> {
    const answer = await this.dialogs.guard(() => this.session.request('figure/edit', { changes }));
    if (answer) this.take(answer);
  }

  /// Keeps the model up to date until the way given back is called. Without a watcher it is not read,
  /// since it holds all points.
  watchModel(): () => void {
    this.watchers++;
    void this.loadModel();
    return () => {
      if (--this.watchers === 0) this.model.value = null;
    };
  }

  async save(): Promise<void> {
    const name = await this.dialogs.askText(t.figure.saveTitle, t.figure.saveHint, t.figure.save);
    if (name === null) return;
    await this.dialogs.guard(async () => {
      const { id } = await this.session.request('figure/save', { name });
      if (id !== null) this.dialogs.say(t.figure.savedAs(name));
    });
  }

  async close(): Promise<void> {
    if (!(await this.dialogs.confirm(t.figure.closeTitle, t.figure.closeText, t.figure.close, true))) return;
    await this.dialogs.guard(() => this.session.request('figure/close', {}));
  }

  /// The bytes of a picture as base64 text, or null after the alert of a failure.
  async picture(format: PictureFormat): Promise<string | null> {
    const { width, height } = this.view;
    const size = width && height ? { width, height } : {};
    try {
      return (await this.session.request('figure/picture', { format, theme: 'light', ...size })).base64;
    } catch (error) {
      if (error instanceof ConnectionLost) this.dialogs.fail(error);
      else if (format === 'pdf') await this.dialogs.alert(t.figure.pdfFailedTitle, t.figure.pdfFailed);
      else await this.dialogs.alert(t.figure.exportFailedTitle, t.figure.exportFailed);
      return null;
    }
  }

  async list(): Promise<void> {
    this.saved.value = null;
    this.saved.value = (await this.dialogs.guard(() => this.session.request('figures/list', {})))?.items ?? [];
  }

  async show(id: string): Promise<void> {
    await this.dialogs.guard(() => this.session.request('figures/show', { id }));
  }

  async remove(figure: SavedFigure): Promise<void> {
    const question = t.figure.deleteText(figure.name);
    if (!(await this.dialogs.confirm(t.figure.deleteTitle, question, t.figure.delete, true))) return;
    const done = await this.dialogs.guard(() => this.session.request('figures/delete', { id: figure.id }));
    if (done) this.saved.value = this.saved.value?.filter((each) => each.id !== figure.id) ?? null;
  }

  private changed(kind: FigureKind, revision: number): void {
    this.kind.value = kind;
    this.revision = revision;
    if (this.watchers) void this.loadModel();
    void this.draw();
  }

  private async loadModel(): Promise<void> {
    if (this.modelUnderWay) return;
    this.modelUnderWay = true;
    const answer = await this.dialogs.guard(() => this.session.request('figure/get', {}));
    this.modelUnderWay = false;
    if (!answer) return;
    const newest = this.revision;
    this.take(answer);
    if (this.watchers && answer.revision < newest) void this.loadModel();
  }

  private take(answer: FigureAnswer): void {
    this.kind.value = answer.kind;
    this.revision = Math.max(this.revision, answer.revision);
    if (this.watchers) this.model.value = answer.model;
    void this.draw();
  }

  private async draw(): Promise<void> {
    const { width, height, theme } = this.view;
    if (this.drawingUnderWay || !width || !height) return;
    if (this.kind.value === 'none') {
      this.drawing.value = null;
      this.drawnKey = '';
      return;
    }
    const { revision } = this;
    const key = `${revision} ${width} ${height} ${theme}`;
    if (key === this.drawnKey) return;
    this.drawingUnderWay = true;
    try {
      this.drawing.value = await this.session.request('figure/drawing', { width, height, theme });
      this.drawnKey = key;
      this.drawnRevision = revision;
      this.letGo();
    } catch (error) {
      if (!(error instanceof ConnectionLost)) this.dialogs.note(String(error));
      return;
    } finally {
      this.drawingUnderWay = false;
    }
    await this.draw();
  }

  private async sendGestures(): Promise<void> {
    if (this.gestureUnderWay) return;
    this.gestureUnderWay = true;
    try {
      for (let next = this.pending.shift(); next; next = this.pending.shift()) {
        const { width, height } = this.view;
        const answer = await this.session.request('figure/gesture', { ...next, width, height } as Gesture);
        this.changed(answer.kind, Math.max(this.revision, answer.revision)); // its model may be left out
        await this.draw();
      }
    } catch (error) {
      this.pending = [];
      if (!(error instanceof ConnectionLost)) this.dialogs.note(String(error));
    } finally {
      this.gestureUnderWay = false;
    }
  }
}
