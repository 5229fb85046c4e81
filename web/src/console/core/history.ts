/// The commands typed before and the place among them. At the front end stands what is being typed
/// now, which is kept while the older ones are looked at.

export class History {
  private items: string[] = [];
  private index = 0;
  private draft = '';

  load(items: string[]): void {
    this.items = items;
    this.index = items.length;
  }

  get hasPrevious(): boolean {
    return this.index > 0;
  }
  get hasNext(): boolean {
    return this.index < this.items.length;
  }

  /// The older command, or null at the oldest. `current` is what stands in the input.
  previous(current: string): string | null {
    if (!this.hasPrevious) return null;
    if (this.index === this.items.length) this.draft = current;
    return this.items[--this.index]!;
  }

  next(): string | null {
    if (!this.hasNext) return null;
    this.index++;
    return this.index === this.items.length ? this.draft : this.items[this.index]!;
  }

  /// After a command was sent: back to the newest place.
  settle(): void {
    this.index = this.items.length;
    this.draft = '';
  }
}
