// The list of pages and the search field of the web site; keloTree and keloTexts stand in pages.js.
(function () {
  'use strict';
  const dark = window.matchMedia && matchMedia('(prefers-color-scheme: dark)').matches;
  if (dark) {
    document.documentElement.dataset.theme = 'dark';
    for (const link of document.querySelectorAll('link[href*="github.min.css"]')) {
      link.href = link.href.replace('github.min.css', 'github-dark.min.css');
    }
  }

  function entry(file) {
    const item = document.createElement('li');
    item.style.marginInlineStart = (file.path.split('/').length - 1) * 0.8 + 'em';
    if (file.isDir) {
      const title = document.createElement('strong');
      title.textContent = file.name;
      item.append(title);
      return item;
    }
    const link = document.createElement('a');
    link.href = keloRoot + file.path;
    link.textContent = file.name;
    if (file.path === keloPage) link.setAttribute('aria-current', 'page');
    item.append(link);
    return item;
  }

  // How near a title comes to the text: 0 is the same, 3 does not contain it.
  function titleRank(title, wanted) {
    const place = title.toLowerCase().indexOf(wanted);
    return place < 0 ? 3 : place > 0 ? 2 : title.length === wanted.length ? 0 : 1;
  }

  function found(text) {
    const wanted = text.toLowerCase();
    return keloTexts
      .map((page) => ({ page, rank: titleRank(page.displayName, wanted), place: page.text.toLowerCase().indexOf(wanted) }))
      .filter((hit) => hit.rank < 3 || hit.place >= 0)
      .sort((a, b) => a.rank - b.rank || a.place - b.place)
      .map((hit) => ({ path: hit.page.relativePath, name: hit.page.displayName, isDir: false }));
  }

  const nav = document.createElement('nav');
  nav.id = 'kelo-pages';
  nav.setAttribute('aria-label', 'Pages');
  const field = document.createElement('input');
  field.type = 'search';
  field.placeholder = 'Search';
  field.setAttribute('aria-label', 'Search');
  const list = document.createElement('ul');
  const show = () => list.replaceChildren(...(field.value ? found(field.value) : keloTree).map(entry));
  field.addEventListener('input', show);
  nav.append(field, list);
  document.body.prepend(nav);
  show();
  const current = list.querySelector('[aria-current]');
  if (current) nav.scrollTop = current.offsetTop - nav.clientHeight / 2;
}());
