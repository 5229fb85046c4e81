/// The variables of the base workspace, and the one that is looked into.

import { computed, signal } from '@preact/signals-core';
import type { Variable } from '../../engine/core/protocol';
import { ConnectionLost, EngineError, type Session } from '../../engine/core/session';
import type { Dialogs } from '../../dialogs/core/dialogs';
import { assignment, parseTable, type ValueTable } from './valueTable';

/// More elements than these are shown as text.
export const kLargestSheet = 20_000;

const isMatrix = (variable: Variable | null): variable is Variable =>
  variable?.size.length === 2 && !/char|struct|handle/i.test(variable.class);
const numElements = ({ size }: Variable) => size.reduce((product, length) => product * length, 1);

export class Workspace {
  readonly variables = signal<Variable[]>([]);
  readonly openName = signal<string | null>(null);
  readonly shownText = signal('');
  readonly open = computed(() => this.variables.value.find((each) => each.name === this.openName.value) ?? null);
  readonly isTooLarge = computed(() => isMatrix(this.open.value) && numElements(this.open.value!) > kLargestSheet);
  readonly table = computed<ValueTable | null>(() => {
    const variable = this.open.value;
    if (!isMatrix(variable) || this.isTooLarge.value || numElements(variable) === 0) return null;
    return parseTable(this.shownText.value, variable.size[0]!, variable.size[1]!);
  });

  constructor(
    private readonly session: Session,
    private readonly dialogs: Dialogs,
    private readonly run: (text: string) => boolean,
  ) {
    session.on('workspace/changed', () => {
      void this.refresh();
    });
    session.on('console/replaced', () => {
      if (this.openName.value) void this.load();
    });
  }

  async refresh(): Promise<void> {
    try {
      this.variables.value = (await this.session.request('workspace/list', {})).variables;
      if (this.openName.value) await this.load();
    } catch (error) {
      if (!(error instanceof ConnectionLost)) this.dialogs.note(String(error));
    }
  }

  look(name: string | null): void {
    this.openName.value = name;
    this.shownText.value = '';
    if (name) void this.load();
  }

  /// Assigns one element by a command, as if it had been typed.
  setElement(row: number, column: number, value: string): boolean {
    const name = this.openName.value;
    return name !== null && value.trim() !== '' && this.run(assignment(name, row, column, value));
  }

  private async load(): Promise<void> {
    const name = this.openName.value!;
    try {
      const { text } = await this.session.request('workspace/show', { name });
      if (name === this.openName.value) this.shownText.value = text;
    } catch (error) {
      // The variable is gone: a run has cleared it.
      if (error instanceof EngineError) this.openName.value = null;
    }
  }
}
