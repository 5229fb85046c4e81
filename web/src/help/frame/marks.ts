/// The places of a text in a page.

import { textNodes } from './pageContent';

export class Marks {
  private marks: HTMLElement[] = [];
  at = 0;

  constructor(private readonly root: HTMLElement) {}

  get count(): number {
    return this.marks.length;
  }

  find(text: string): void {
    this.marks = markAll(this.root, text);
    this.at = 0;
    this.step(0);
  }

  step(by: number): void {
    const { marks } = this;
    if (!marks.length) return;
    marks[this.at]?.classList.remove('current');
    this.at = (this.at + by + marks.length) % marks.length;
    marks[this.at]!.classList.add('current');
    marks[this.at]!.scrollIntoView({ block: 'center' });
  }
}

/// Marks all places of a text in the page, and takes older marks away. Gives the marks in order.
function markAll(root: HTMLElement, query: string): HTMLElement[] {
  for (const mark of root.querySelectorAll('mark')) {
    const parent = mark.parentNode!;
    mark.replaceWith(...mark.childNodes);
    parent.normalize();
  }
  const wanted = query.trim().toLowerCase();
  if (!wanted) return [];
  const marks: HTMLElement[] = [];
  for (let node of textNodes(root)) {
    for (let at = node.data.toLowerCase().indexOf(wanted); at >= 0; at = node.data.toLowerCase().indexOf(wanted)) {
      const found = node.splitText(at);
      node = found.splitText(wanted.length);
      const mark = document.createElement('mark');
      found.replaceWith(mark);
      mark.append(found);
      marks.push(mark);
    }
  }
  return marks;
}
