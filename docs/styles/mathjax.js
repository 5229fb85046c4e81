window.MathJax = {
  options: { enableMenu: false, menuOptions: { settings: { assistiveMml: false } } },
  loader: { paths: { mathjax: document.getElementById('MathJax-script').src.replace(/\/[^/]*$/, '') } },
};
