/// A help page as nodes: its body with a short list of allowed elements and attributes. Nothing of it
/// can run, and scripts and styles of the page stay out, besides what the frame keeps in anyway.

const kAllowed = new Set([
  'A',
  'ARTICLE',
  'B',
  'BLOCKQUOTE',
  'BR',
  'CODE',
  'DD',
  'DEL',
  'DIV',
  'DL',
  'DT',
  'EM',
  'FIGCAPTION',
  'FIGURE',
  'FOOTER',
  'H1',
  'H2',
  'H3',
  'H4',
  'H5',
  'H6',
  'HR',
  'I',
  'IMG',
  'KBD',
  'LI',
  'MAIN',
  'OL',
  'P',
  'PRE',
  'S',
  'SECTION',
  'SPAN',
  'STRONG',
  'SUB',
  'SUP',
  'TABLE',
  'TBODY',
  'TD',
  'TH',
  'THEAD',
  'TR',
  'UL',
  'VAR',
]);
const kAttributes: Record<string, string[]> = {
  A: ['href'],
  IMG: ['alt'],
  TD: ['align'],
  TH: ['align'],
  OL: ['start'],
};
const kEverywhere = ['id', 'class'];

export interface PageLinks {
  /// The SVG text of a picture that a page names; null leaves the picture out.
  picture(source: string): Promise<string | null>;
}

/// What is left out later all the same is taken away before, since the policy would note it at parsing.
function parsed(html: string): Document {
  const plain = html
    .replace(/<(style|script)\b[^]*?<\/\1>/gi, '')
    .replace(/<\w[^>]*>/g, (tag) => tag.replace(/\s(?:style|on\w+)\s*=\s*(?:"[^"]*"|'[^']*'|[^\s>]+)/gi, ''));
  return new DOMParser().parseFromString(plain, 'text/html');
}

export function pageNodes(html: string, links: PageLinks): DocumentFragment {
  const page = parsed(html);
  const content = document.createDocumentFragment();
  for (const node of page.body.childNodes) append(content, node, links);
  return content;
}

function append(parent: Node, node: Node, links: PageLinks): void {
  if (node.nodeType === Node.TEXT_NODE) {
    parent.appendChild(document.createTextNode(node.nodeValue ?? ''));
    return;
  }
  if (!(node instanceof Element)) return;
  const name = node.nodeName.toUpperCase();
  if (!kAllowed.has(name)) {
    if (name !== 'SCRIPT' && name !== 'STYLE') node.childNodes.forEach((child) => append(parent, child, links));
    return;
  }
  const element = document.createElement(name);
  for (const attribute of [...kEverywhere, ...(kAttributes[name] ?? [])]) {
    const value = node.getAttribute(attribute);
    if (value !== null) element.setAttribute(attribute, value);
  }
  if (element instanceof HTMLImageElement) {
    void links.picture(node.getAttribute('src') ?? '').then((svg) => {
      if (svg) element.src = `data:image/svg+xml;charset=utf-8,${encodeURIComponent(svg)}`;
      else element.remove();
    });
  }
  if (
    element instanceof HTMLAnchorElement &&
    /^\s*(javascript|data|vbscript):/i.test(element.getAttribute('href') ?? '')
  ) {
    element.removeAttribute('href');
  }
  node.childNodes.forEach((child) => append(element, child, links));
  parent.appendChild(element);
}

type Translator = (formula: string, options: object) => string;

/// Fetches the translator of formulas. A frame without an origin can load scripts, but no modules.
function translator(): Promise<Translator> {
  const known = (window as never as { formulas?: Translator }).formulas;
  if (known) return Promise.resolve(known);
  return new Promise((resolve, reject) => {
    const script = document.createElement('script');
    script.src = document.documentElement.dataset.formulas!;
    script.onload = () => resolve((window as never as { formulas: Translator }).formulas);
    script.onerror = reject;
    document.head.append(script);
  });
}

/// Puts formulas, written between \( \) or \[ \], into MathML. The translator is fetched when a page
/// has any.
export async function setFormulas(root: HTMLElement): Promise<void> {
  const texts = textNodes(root).filter((node) => /\\[([]/.test(node.data) && !node.parentElement?.closest('pre, code'));
  if (!texts.length) return;
  const renderToString = await translator();
  for (const node of texts) {
    const parts = node.data.split(/(\\\(.*?\\\)|\\\[[^]*?\\\])/);
    if (parts.length < 2) continue;
    const holder = document.createDocumentFragment();
    for (const part of parts) {
      if (!/^\\[([]/.test(part)) {
        holder.append(part);
        continue;
      }
      const displayMode = part.startsWith('\\[');
      const html = renderToString(part.slice(2, -2), { output: 'mathml', displayMode, throwOnError: false });
      const math = parsed(html).querySelector('math');
      const span = document.createElement('span');
      span.className = displayMode ? 'formula display' : 'formula';
      if (math) span.append(document.importNode(math, true));
      else span.textContent = part.slice(2, -2);
      holder.append(span);
    }
    node.replaceWith(holder);
  }
}

export function textNodes(root: Node): Text[] {
  const walker = document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
  const found: Text[] = [];
  while (walker.nextNode()) found.push(walker.currentNode as Text);
  return found;
}
