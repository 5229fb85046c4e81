// Marks the places of a text in the page and steps through them. A front end calls these functions by their names.
(function () {
  'use strict';
  const kClass = 'uiwebview-highlight';
  let marks = [];
  let current = -1;

  function textNodes() {
    const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT, {
      acceptNode: (node) => (/^(SCRIPT|STYLE|NOSCRIPT)$/.test(node.parentNode.nodeName)
        ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT),
    });
    const nodes = [];
    while (walker.nextNode()) nodes.push(walker.currentNode);
    return nodes;
  }

  // Letters whose small form has another length keep the large one, so that places stay the same.
  function folded(text) {
    const small = text.toLowerCase();
    return small.length === text.length ? small : [...text].map((c) => {
      const s = c.toLowerCase();
      return s.length === c.length ? s : c;
    }).join('');
  }

  function markIn(node, text) {
    const found = [];
    for (let at = folded(node.data).indexOf(text); at >= 0; at = folded(node.data).indexOf(text)) {
      const hit = node.splitText(at);
      node = hit.splitText(text.length);
      const mark = document.createElement('mark');
      mark.className = kClass;
      hit.parentNode.replaceChild(mark, hit);
      mark.appendChild(hit);
      found.push(mark);
    }
    return found;
  }

  function step(by) {
    if (marks.length === 0) return -1;
    if (current >= 0) marks[current].removeAttribute('aria-current');
    current = (current + by + marks.length) % marks.length;
    marks[current].setAttribute('aria-current', 'true');
    marks[current].scrollIntoView({ block: 'center' });
    return current;
  }

  /// Takes all marks away.
  window.uiWebview_RemoveAllHighlights = function () {
    for (const mark of marks) {
      const parent = mark.parentNode;
      parent.replaceChild(mark.firstChild, mark);
      parent.normalize();
    }
    marks = [];
    current = -1;
  };

  /// Marks every place of a text in the visible text, ignoring case, and goes to the first.
  window.uiWebview_HighlightAllOccurencesOfString = function (text) {
    window.uiWebview_RemoveAllHighlights();
    if (text === '') return;
    for (const node of textNodes()) marks.push(...markIn(node, folded(text)));
    step(1);
  };

  /// How many places are marked.
  window.uiWeview_resultCount = function () { return marks.length; };

  /// Go to the next or previous place; give its number, from 0, or -1 when there is none.
  window.uiWebview_nextResult = function () { return step(1); };
  window.uiWebview_previousResult = function () { return step(-1); };
}());
