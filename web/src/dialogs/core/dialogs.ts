/// The dialogs that a feature asks for: an alert, a confirmation, a question with a text field, a
/// choice of folder. One is shown at a time, in the order of asking. The views read `current`.

import { signal } from '@preact/signals-core';
import { ConnectionLost, EngineError } from '../../engine/core/session';
import { text as t } from '../../texts/texts';

export interface Action {
  label: string;
  danger?: boolean;
}
export interface Dialog {
  title: string;
  text: string;
  /// Without a field the dialog is an alert or a confirmation.
  field?: { label: string; hint: string; value: string; select?: number };
  /// Two texts to compare, for conflicts.
  compare?: { leftTitle: string; left: string; rightTitle: string; right: string };
  /// A list of which one entry is chosen.
  choices?: { value: string; label: string }[];
  /// What confirms; absent for a plain alert.
  actions: Action[];
  cancel: string;
}
export interface DialogAnswer {
  action: number;
  field: string;
}
interface Open extends Dialog {
  answer(result: DialogAnswer | null): void;
}

export class Dialogs {
  readonly current = signal<Open | null>(null);
  readonly toast = signal<{ text: string; action?: string; onAction?: () => void } | null>(null);
  private readonly queue: Open[] = [];
  /// The latest faults, newest last, for the diagnostics.
  readonly faults: string[] = [];

  ask(dialog: Dialog): Promise<DialogAnswer | null> {
    return new Promise((resolve) => {
      this.queue.push({
        ...dialog,
        answer: (result) => {
          this.next();
          resolve(result);
        },
      });
      if (!this.current.value) this.next();
    });
  }

  async alert(title: string, text = ''): Promise<void> {
    this.note(title); // the text may name files
    await this.ask({ title, text, actions: [], cancel: t.dialogs.ok });
  }

  async confirm(title: string, text: string, action: string, danger = false): Promise<boolean> {
    return (await this.ask({ title, text, actions: [{ label: action, danger }], cancel: t.dialogs.cancel })) !== null;
  }

  async askText(title: string, hint: string, action: string, value = '', select?: number): Promise<string | null> {
    const answer = await this.ask({
      title,
      text: '',
      field: { label: title, hint, value, select },
      actions: [{ label: action }],
      cancel: t.dialogs.cancel,
    });
    return answer ? answer.field : null;
  }

  async choose(title: string, text: string, choices: { value: string; label: string }[], action: string) {
    const answer = await this.ask({ title, text, choices, actions: [{ label: action }], cancel: t.dialogs.cancel });
    return answer ? answer.field : null;
  }

  /// Runs the work and shows whatever it throws. Gives undefined when it threw.
  async guard<T>(work: () => Promise<T>): Promise<T | undefined> {
    try {
      return await work();
    } catch (error) {
      this.fail(error);
      return undefined;
    }
  }

  fail(error: unknown): void {
    if (error instanceof ConnectionLost) this.say(t.connection.notNow);
    else if (error instanceof EngineError && error.isAlert) void this.alert(error.title, error.text);
    else {
      const message = error instanceof Error ? error.message : String(error);
      this.note(message);
      void this.alert(t.dialogs.unexpected, message);
    }
  }

  say(text: string, action?: string, onAction?: () => void): void {
    this.toast.value = { text, action, onAction };
  }

  note(text: string): void {
    this.faults.push(text);
    if (this.faults.length > 50) this.faults.shift();
  }

  private next(): void {
    this.current.value = this.queue.shift() ?? null;
  }
}
