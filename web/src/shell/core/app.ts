/// The app without its views: every feature's state on one session, and what happens when the
/// connection is made, lost and made again.

import { effect, untracked } from '@preact/signals-core';
import type { Clock, Store } from '../../engine/core/ports';
import type { Engine } from '../../engine/core/engine';
import { ConnectionLost, EngineError, Session } from '../../engine/core/session';
import { Console } from '../../console/core/console';
import { Dialogs } from '../../dialogs/core/dialogs';
import { Editor, isDirty, isProgram } from '../../editor/core/editor';
import { Figure } from '../../figure/core/figure';
import { Files } from '../../files/core/files';
import { Help } from '../../help/core/help';
import { Keyboard } from '../../keyboard/core/keyboard';
import { PreferenceStore } from '../../settings/core/preferences';
import { Settings } from '../../settings/core/settings';
import { Tour } from '../../tour/core/tour';
import { Workspace } from '../../workspace/core/workspace';
import { text as t } from '../../texts/texts';
import { Layout } from './layout';

const kNoMethod = -32601;

export class App {
  readonly session: Session;
  readonly dialogs = new Dialogs();
  readonly layout: Layout;
  readonly preferences: PreferenceStore;
  readonly settings: Settings;
  readonly console: Console;
  readonly editor: Editor;
  readonly files: Files;
  readonly figure: Figure;
  readonly workspace: Workspace;
  readonly help: Help;
  readonly keyboard: Keyboard;
  readonly tour: Tour;
  private openedBefore = false;

  constructor(
    engine: Engine,
    store: Store,
    readonly clock: Clock,
  ) {
    const session = (this.session = new Session(engine, () => clock.now()));
    this.layout = new Layout(store);
    this.preferences = new PreferenceStore(store);
    this.settings = new Settings(session, this.dialogs);
    this.editor = new Editor(session, this.dialogs, clock, store);
    this.files = new Files(session, this.dialogs, (from, to) => this.editor.moved(from, to));
    this.console = new Console(session, this.dialogs, clock, () => this.files.folder.value);
    this.figure = new Figure(session, this.dialogs);
    this.workspace = new Workspace(session, this.dialogs, (text) => this.console.run(text));
    this.help = new Help(session, this.dialogs);
    this.keyboard = new Keyboard(session);
    this.tour = new Tour(
      (panel) => this.layout.show(panel),
      () => this.preferences.set({ tourSeen: true }),
    );
    effect(() => {
      if (session.state.value === 'open')
        untracked(() => {
          void this.opened();
        });
    });
  }

  start(): void {
    this.session.open();
  }

  /// Opens the place of an error: the file at its line.
  async openPlace(file: string, line: number, column: number): Promise<void> {
    const folder = this.files.folder.value;
    const known = this.editor.files.value.find((each) => each.path === file || each.path.endsWith(`/${file}`));
    const path = known?.path ?? (file.includes('/') || !folder ? file : `${folder}/${file}`);
    if (await this.editor.open(path, line, column)) this.layout.show('editor');
  }

  async openFile(path: string, line = 0): Promise<void> {
    const size = this.files.items.value?.find(({ relativePath }) => relativePath === path)?.size ?? 0;
    if (await this.editor.open(path, line, 1, size)) this.layout.show('editor');
  }

  /// Saves what is unsaved of the file and runs it.
  async runFile(path: string): Promise<void> {
    const file = this.editor.files.value.find((each) => each.path === path);
    if (file && isDirty(file) && !(await this.editor.save(path))) return;
    if (!isProgram(path)) return;
    if (!this.layout.isShown('console')) this.layout.show('console');
    await this.console.runFile(path);
  }

  /// Runs a text as if it had been typed, and brings the console into view.
  runText(text: string): void {
    if (!this.layout.isShown('console')) this.layout.show('console');
    this.console.run(text);
  }

  async showHelpOn(name: string): Promise<void> {
    if (await this.help.openName(name)) this.layout.show('help');
  }

  /// Loads one panel; what it throws is shown, and the other panels load all the same.
  private async load(work: () => Promise<void>): Promise<void> {
    try {
      await work();
    } catch (error) {
      if (error instanceof ConnectionLost) throw error;
      // An engine of another version may lack a method; the panel stays empty then.
      if (error instanceof EngineError && error.code === kNoMethod) this.dialogs.note(error.message);
      else this.dialogs.fail(error);
    }
  }

  private knowsSomething(): boolean {
    return this.console.items.length + this.workspace.variables.value.length > 0;
  }

  private async opened(): Promise<void> {
    const knew = this.knowsSomething();
    try {
      const answer = await this.session.request('session/open', {});
      this.settings.opened(answer);
      await Promise.all(
        [
          () => this.console.refresh(answer.runState),
          () => this.files.reload(),
          () => this.workspace.refresh(),
          () => this.figure.refresh(),
          () => this.keyboard.load(),
          () => this.editor.restore(),
        ].map((load) => this.load(load)),
      );
    } catch (error) {
      if (!(error instanceof ConnectionLost)) this.dialogs.fail(error);
      return;
    }
    if (this.openedBefore) this.dialogs.say(knew && !this.knowsSomething() ? t.connection.anew : t.connection.back);
    this.openedBefore = true;
    if (!this.preferences.value.value.tourSeen && this.tour.index.value < 0) this.tour.start();
  }
}
