/// A few help pages.

const names = ['mean', 'median', 'plot', 'sum', 'std'];
const folder = (relativePath: string, displayName: string) => ({ relativePath, displayName, isDir: true, ext: '' });
const page = (relativePath: string, displayName: string) => ({ relativePath, displayName, isDir: false, ext: 'html' });

export const kDocs = [
  folder('guide', 'Guide'),
  page('guide/first-steps.html', 'First steps'),
  page('guide/figures.html', 'Figures'),
  folder('functions', 'Functions'),
  ...names.map((name) => page(`functions/${name}.html`, name)),
];

export function docPage(path: string): string {
  const name = path.slice(path.lastIndexOf('/') + 1).replace('.html', '');
  return `<!DOCTYPE html><html><head><script>window.harmed = true</script></head><body class="markdown-body"><main><h1>${name}</h1>
<p>Gives the ${name} of the elements: \\(\\frac{1}{n}\\sum_{i=1}^{n} a_i\\), column by column. See <a href="median.html"><code>median</code></a>.<img src="curve.svg" alt="A curve" style="color: red" onerror="window.harmed = true"><img src="../../secret" alt=""></p>
<h2>Forms</h2><pre><code class="language-matlab">m = ${name}(A)\nm = ${name}(A, dim)</code></pre>
<h2>Arguments</h2><table><thead><tr><th>Name</th><th>May be</th><th>Meaning</th></tr></thead>
<tbody><tr><td><code>A</code></td><td>numeric array</td><td>the values</td></tr><tr><td><code>dim</code></td><td>1, 2, ...</td><td>the dimension</td></tr></tbody></table>
<h2>Examples</h2><p>The plain use first.</p><div class="example"><pre class="input"><code class="language-matlab">A = [1 2; 3 6];\n${name}(A)</code></pre>
<pre class="output"><code>ans = \n 2   4</code></pre></div></main><footer><p>Last updated: version 1.0</p></footer></body></html>`;
}
