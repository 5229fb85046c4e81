// tests/browser/measure.ts
import { chromium } from "playwright-core";

// tests/browser/keyTimes.ts
async function traced(browser2, categories, work) {
  const client = await browser2.newBrowserCDPSession();
  const events = [];
  client.on("Tracing.dataCollected", ({ value }) => events.push(...value));
  const traceConfig = { includedCategories: categories };
  await client.send("Tracing.start", { traceConfig, transferMode: "ReportEvents" });
  await work();
  const complete = new Promise((resolve) => client.once("Tracing.tracingComplete", resolve));
  await client.send("Tracing.end");
  await complete;
  await client.detach();
  return events.sort((a, b) => a.ts - b.ts);
}
async function press(page3, keys2) {
  for (let k = 0; k < keys2; k++) {
    await page3.keyboard.press("a");
    await page3.waitForTimeout(200 + 7 * k % 17);
  }
}
async function keyToScreen(browser2, page3, keys2) {
  const began = /* @__PURE__ */ new Map();
  const times2 = [];
  for (const event of await traced(browser2, ["latencyInfo"], () => press(page3, keys2))) {
    if (event.name !== "InputLatency::KeyDown") continue;
    const id = event.id ?? event.id2?.local ?? event.id2?.global ?? "";
    if (event.ph === "b") began.set(id, event.ts);
    else if (began.has(id)) times2.push((event.ts - began.get(id)) / 1e3);
  }
  return times2;
}
async function processorTime(browser2, page3, keys2) {
  const events = await traced(browser2, ["devtools.timeline", "disabled-by-default-devtools.timeline", "toplevel"], () => press(page3, keys2));
  const downs = events.filter(({ name, args }) => name === "EventDispatch" && args.data?.type === "keydown");
  const mine = events.filter(({ pid, tid }) => pid === downs[0]?.pid && tid === downs[0]?.tid);
  const tasks = mine.filter(({ name }) => name === "ThreadControllerImpl::RunTask");
  return downs.flatMap(({ ts }) => {
    const commit = mine.find((event) => event.name === "Commit" && event.ts > ts);
    if (!commit) return [];
    const busy = tasks.filter((task) => task.ts + task.dur > ts && task.ts < commit.ts);
    return [busy.reduce((sum, { tdur }) => sum + tdur, 0) / 1e3];
  });
}

// tests/browser/server.ts
import { createServer } from "node:http";
import { readFile } from "node:fs/promises";
import { extname, join, normalize } from "node:path";
import { WebSocketServer } from "ws";

// tests/fake/drawing.ts
var kCount = 300;
var wave = (x, k) => Math.exp(-x * x) * (k ? Math.cos(6 * x) : 1);
function exampleModel(kind) {
  if (kind === "surface") {
    return {
      surfaces: [{ points: [{ x: 0, y: 0, z: 0 }], attributes: { numRows: 1, numCols: 1, type: 0 } }],
      title: null,
      grid: true,
      xlabel: "",
      ylabel: "",
      zlabel: "",
      xlims: { lower: 0, upper: 1 },
      ylims: { lower: 0, upper: 1 },
      zlims: { lower: 0, upper: 1 },
      autoXLims: true,
      autoYLims: true,
      autoZLims: true
    };
  }
  const xs = Array.from({ length: kCount }, (_, k) => -3 + 6 * k / (kCount - 1));
  return {
    lines: ["envelope", "wave"].map((name, k) => ({
      points: xs.map((x) => [x, wave(x, k)]),
      attribute: {
        lineStyle: 0,
        lineColor: "",
        lineWidth: 1,
        markerStyle: 13,
        markerSize: 1,
        name,
        shownInLegend: true,
        type: 0
      }
    })),
    title: "Wave packet",
    xLabel: null,
    yLabel: null,
    shouldShowLegend: true,
    shouldShowGrid: true,
    shouldHold: false,
    legendAttributes: { position: 0 },
    xlims: { lower: -3, upper: 3 },
    ylims: { lower: -1, upper: 1 },
    autoXLimits: true,
    autoYLimits: true
  };
}
function drawingOf(_, width, height, theme) {
  const [ink, grid, ...colors2] = theme === "dark" ? ["#b9bbc1ff", "#3b3d42ff", "#5aa0ffff", "#ff6464ff"] : ["#4c4e54ff", "#d3d4d8ff", "#1f6fd6ff", "#d1343fff"];
  const area = { x: 52, y: 40, width: width - 72, height: height - 80 };
  const place = (x, y) => [
    area.x + (x + 3) / 6 * area.width,
    area.y + (1 - y) / 2 * area.height
  ];
  const items = [
    { kind: "polygon", role: "background", points: [0, 0, width, 0, width, height, 0, height], fill: "#ffffffff" }
  ];
  for (let x = -3; x <= 3; x++) {
    const [px, bottom] = place(x, -1);
    items.push({ kind: "path", role: "grid", points: [px, area.y, px, bottom], stroke: grid, width: 0.5 });
    items.push({
      kind: "text",
      role: "x tick label",
      x: px,
      y: bottom + 18,
      text: String(x),
      size: 12,
      anchor: "middle",
      color: ink
    });
  }
  for (let y = -1; y <= 1; y += 0.5) {
    const [, py] = place(0, y);
    items.push({ kind: "path", role: "grid", points: [area.x, py, area.x + area.width, py], stroke: grid, width: 0.5 });
    items.push({
      kind: "text",
      role: "y tick label",
      x: area.x - 8,
      y: py + 4,
      text: y.toFixed(1),
      size: 12,
      anchor: "end",
      color: ink
    });
  }
  items.push({
    kind: "polygon",
    role: "x axis",
    points: [
      area.x,
      area.y,
      area.x + area.width,
      area.y,
      area.x + area.width,
      area.y + area.height,
      area.x,
      area.y + area.height
    ],
    stroke: ink,
    width: 1
  });
  items.push({
    kind: "text",
    role: "title",
    x: width / 2,
    y: 24,
    text: "Wave packet",
    size: 15,
    anchor: "middle",
    color: ink
  });
  items.push({ kind: "clip", role: "plot area", points: [area.x, area.y, area.x + area.width, area.y + area.height] });
  [0, 1].forEach(
    (k) => items.push({
      kind: "path",
      role: `line ${k + 1}`,
      stroke: colors2[k],
      width: 1.5,
      points: Array.from({ length: kCount }, (_2, i) => -3 + 6 * i / (kCount - 1)).flatMap(
        (x) => place(x, wave(x, k))
      )
    })
  );
  items.push({ kind: "restore", role: "plot area" });
  return {
    width,
    height,
    plotArea: [area.x, area.y, area.x + area.width, area.y + area.height],
    items,
    title: "Wave packet",
    description: "Plot \u201CWave packet\u201D with 2 lines."
  };
}

// tests/fake/docs.ts
var names = ["mean", "median", "plot", "sum", "std"];
var folder = (relativePath, displayName) => ({ relativePath, displayName, isDir: true, ext: "" });
var page = (relativePath, displayName) => ({ relativePath, displayName, isDir: false, ext: "html" });
var kDocs = [
  folder("guide", "Guide"),
  page("guide/first-steps.html", "First steps"),
  page("guide/figures.html", "Figures"),
  folder("functions", "Functions"),
  ...names.map((name) => page(`functions/${name}.html`, name))
];
function docPage(path) {
  const name = path.slice(path.lastIndexOf("/") + 1).replace(".html", "");
  return `<!DOCTYPE html><html><head><script>window.harmed = true</script></head><body class="markdown-body"><main><h1>${name}</h1>
<p>Gives the ${name} of the elements: \\(\\frac{1}{n}\\sum_{i=1}^{n} a_i\\), column by column. See <a href="median.html"><code>median</code></a>.<img src="curve.svg" alt="A curve" style="color: red" onerror="window.harmed = true"><img src="../../secret" alt=""></p>
<h2>Forms</h2><pre><code class="language-matlab">m = ${name}(A)
m = ${name}(A, dim)</code></pre>
<h2>Arguments</h2><table><thead><tr><th>Name</th><th>May be</th><th>Meaning</th></tr></thead>
<tbody><tr><td><code>A</code></td><td>numeric array</td><td>the values</td></tr><tr><td><code>dim</code></td><td>1, 2, ...</td><td>the dimension</td></tr></tbody></table>
<h2>Examples</h2><p>The plain use first.</p><div class="example"><pre class="input"><code class="language-matlab">A = [1 2; 3 6];
${name}(A)</code></pre>
<pre class="output"><code>ans = 
 2   4</code></pre></div></main><footer><p>Last updated: version 1.0</p></footer></body></html>`;
}

// tests/fake/keyboard.ts
var kWords = {
  deleteBackward: { image: "delete.left", widthUnit: 3 },
  enter: { text: "return", widthUnit: 4 },
  shift: { image: "shift", widthUnit: 3 },
  numKeyboard: { text: "123", widthUnit: 3 },
  abc: { text: "ABC", widthUnit: 3 },
  space: { text: "space", char: " ", widthUnit: 6 }
};
var key = (id) => ({
  id,
  widthUnit: 2,
  ...kWords[id] ?? { text: id, char: id },
  ...id === "e" ? { longPress: ["exp(", "eps"] } : {}
});
var rows = (...texts) => texts.map((text) => text.split(" ").map(key));
var keyboardLayouts = {
  alpha: rows(
    "q w e r t y u i o p deleteBackward",
    "a s d f g h j k l enter",
    "shift z x c v b n m , ;",
    "numKeyboard [ ( space ) ] : ="
  ),
  alphaCap: rows(
    "Q W E R T Y U I O P deleteBackward",
    "A S D F G H J K L enter",
    "shift Z X C V B N M , ; =",
    "numKeyboard [ ( space ) ] : ="
  ),
  symbol: rows(
    "1 2 3 4 5 6 7 8 9 0 deleteBackward",
    "^ \\ - + * . < > ~ enter",
    "/ ! _ @ ' % | & ? , ;",
    "abc [ ( space ) ] : ="
  )
};
function pressKey(params) {
  const { keyboardType, capLocked, key: id, tap } = params;
  if (id === "shift") {
    return tap === "double" ? { keyboardType: "alphaCap", capLocked: true } : { keyboardType: keyboardType === "alpha" ? "alphaCap" : "alpha", capLocked: false };
  }
  if (id === "numKeyboard") return { keyboardType: "symbol", capLocked };
  if (id === "abc") return { keyboardType: "alpha", capLocked };
  if (id === "deleteBackward" || id === "enter") return { keyboardType, capLocked, action: id };
  return {
    keyboardType: keyboardType === "alphaCap" && !capLocked ? "alpha" : keyboardType,
    capLocked,
    insert: id === "space" ? " " : id
  };
}

// tests/fake/engine.ts
var Alert = class extends Error {
  constructor(title, text = "") {
    super(title);
    this.title = title;
    this.text = text;
  }
};
var kPixel = "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAABJRU5ErkJggg==";
var kBuiltIns = [
  "abs",
  "linspace",
  "mean",
  "median",
  "plot",
  "rand",
  "sin",
  "sqrt",
  "sum",
  "surf",
  "zeros",
  "ones",
  "disp",
  "numel"
];
var FakeSession = class {
  constructor() {
    this.state = {
      items: [],
      history: [],
      status: "idle",
      files: /* @__PURE__ */ new Map(),
      variables: [],
      model: null,
      revision: 0,
      answer: null,
      saved: [],
      settings: {
        numDigitIndex: 0,
        showWarning: true,
        sortedBy: 5,
        consoleCells: 80,
        docTextSize: 100,
        docStyle: "auto"
      }
    };
    this.requests = [];
    this.clients = /* @__PURE__ */ new Set();
    this.methods = {
      "session/open": () => ({
        version: "1.0",
        protocol: 1,
        workDir: "/home/ada/Kelo",
        workDirDisplayText: "~/Kelo",
        settings: this.state.settings,
        runState: this.state.status
      }),
      "settings/get": () => this.state.settings,
      "settings/set": (change) => Object.assign(this.state.settings, change),
      "console/run": ({ text }) => this.run(text),
      "file/run": ({ path }) => this.run(this.file(path), path),
      "run/stop": () => {
        this.state.answer?.("");
        return {};
      },
      "console/answer": ({ text }) => {
        this.state.answer?.(text);
        this.state.answer = null;
        return {};
      },
      "console/items": () => ({ items: this.state.items }),
      "console/clear": () => {
        this.state.items = [];
        this.notify("console/cleared", {});
        return {};
      },
      "console/history": () => ({ items: this.state.history }),
      "console/complete": ({ text, position }) => {
        const word = /[A-Za-z_]\w*$/.exec(text.slice(0, position))?.[0] ?? "";
        return {
          from: position - word.length,
          items: kBuiltIns.filter((name) => word && name.startsWith(word)).map((label) => ({ label, kind: "function", detail: `${label}(...)` }))
        };
      },
      "console/isComplete": ({ text }) => ({
        complete: (text.match(/\b(for|if|while)\b/g) ?? []).length <= (text.match(/\bend\b/g) ?? []).length
      }),
      "workspace/list": () => ({ variables: [...this.state.variables].sort((a, b) => a.name.localeCompare(b.name)) }),
      "workspace/show": ({ name }) => {
        const item = [...this.state.items].reverse().find((each) => each.varName === name);
        if (!item) throw new Error("no such variable");
        return { text: item.text };
      },
      "editor/highlight": ({ text }) => ({ spans: colors(text) }),
      "editor/indentedLine": ({ text, position }) => {
        const before = text.slice(0, position).split("\n");
        const line = text.split("\n")[before.length - 1].trimStart();
        const depth = before.slice(0, -1).join(" ").split(/\b(?:for|if|while|switch)\b/).length - before.slice(0, -1).join(" ").split(/\bend\b/).length;
        return { line: " ".repeat(4 * Math.max(0, depth - (/^(end|else)/.test(line) ? 1 : 0))) + line };
      },
      "editor/comment": (s) => ({
        ...s,
        text: s.text.slice(0, s.text.lastIndexOf("\n", s.start - 1) + 1) + "% " + s.text.slice(s.text.lastIndexOf("\n", s.start - 1) + 1)
      }),
      "editor/uncomment": (s) => s,
      "editor/indent": (s) => s,
      "keyboard/layouts": () => keyboardLayouts,
      "keyboard/press": pressKey,
      "files/list": ({ path }) => ({ path, sortedBy: this.state.settings.sortedBy, items: this.list(path) }),
      "files/newFile": ({ folder: folder2, name }) => this.make(folder2, name, `%% ${name.replace(/\..*/, "")}
%% Enter your code here.
`),
      "files/newFolder": ({ folder: folder2, name }) => this.make(folder2, name, null),
      "files/import": ({ folder: folder2, name, text }) => this.make(folder2, name, text),
      "files/read": ({ path }) => ({ text: this.file(path), revision: String(this.file(path).length) }),
      "files/write": ({ path, text, revision }) => {
        if (revision && revision !== String(this.file(path).length))
          throw new Alert("Failed to save", "The file was changed");
        this.state.files.set(path, text);
        this.notify("files/changed", { path: path.slice(0, Math.max(0, path.lastIndexOf("/"))) });
        return { revision: String(text.length) };
      },
      "files/delete": ({ paths }) => {
        paths.forEach((path) => this.state.files.delete(path));
        return {};
      },
      "files/rename": ({ path, name }) => {
        const made = this.make("", name, this.file(path));
        this.state.files.delete(path);
        return made;
      },
      "files/search": ({ text }) => ({
        items: [...this.state.files].flatMap(
          ([path, content]) => (content ?? "").split("\n").flatMap(
            (line, k) => line.includes(text) ? [{ path, line: k + 1, start: line.indexOf(text), length: text.length, preview: line }] : []
          )
        )
      }),
      "figure/get": () => this.figure,
      "figure/drawing": ({ width, height, theme }) => drawingOf(this.state.model, width, height, theme),
      "figure/tip": ({ x, y }) => ({ line: 0, index: 3, x: 1.5, y: 0.25, px: x, py: y }),
      "figure/gesture": () => {
        this.changeFigure();
        return this.figure;
      },
      "figure/edit": ({ changes }) => {
        Object.assign(this.state.model, changes);
        this.changeFigure();
        return this.figure;
      },
      "figure/picture": () => ({ base64: kPixel }),
      "figure/save": ({ name }) => {
        if (this.state.saved.some((each) => each.name === name))
          throw new Alert("Failed to Save", `Figure named "${name}" already exists.`);
        this.state.saved.push({ id: name, name, timeStamp: 817e6, thumbnail: kPixel });
        return { id: name };
      },
      "figure/close": () => {
        this.state.model = null;
        this.changeFigure();
        return {};
      },
      "figures/list": () => ({ items: this.state.saved }),
      "figures/show": () => {
        this.state.model = exampleModel("plot");
        this.changeFigure();
        return {};
      },
      "figures/delete": ({ id }) => {
        this.state.saved = this.state.saved.filter((each) => each.id !== id);
        return {};
      },
      "docs/tree": () => ({ files: kDocs }),
      "docs/page": ({ relativePath }) => ({ html: docPage(relativePath) }),
      "docs/picture": ({ relativePath }) => relativePath === "functions/curve.svg" ? { svg: '<svg xmlns="http://www.w3.org/2000/svg" width="60" height="20"><path d="M0 20L60 0"/></svg>' } : null,
      "docs/search": ({ text }) => ({ items: kDocs.filter((file) => !file.isDir && file.displayName.includes(text)) }),
      "docs/name": ({ name }) => kDocs.some((file) => file.displayName === name) ? { relativePath: `functions/${name}.html` } : null
    };
  }
  join(send) {
    this.clients.add(send);
    return () => this.clients.delete(send);
  }
  notify(method, params) {
    const text = JSON.stringify({ jsonrpc: "2.0", method, params });
    this.clients.forEach((send) => send(text));
  }
  async receive(text, send) {
    const { id, method, params } = JSON.parse(text);
    this.requests.push({ method, params });
    const handler = this.methods[method];
    let body;
    try {
      if (!handler) throw Object.assign(new Error(`unknown method ${method}`), { code: -32601 });
      body = { result: await handler(params) };
    } catch (error) {
      const { title, text: detail } = error;
      body = {
        error: error instanceof Alert ? { code: 1, message: title, data: { title, text: detail } } : { code: error.code ?? -32602, message: String(error.message) }
      };
    }
    send(JSON.stringify({ jsonrpc: "2.0", id, ...body }));
  }
  add(item) {
    const full = { index: this.state.items.length, ...item };
    this.state.items.push(full);
    this.notify("console/item", full);
  }
  setStatus(status) {
    this.state.status = status;
    this.notify("run/state", { status });
  }
  async run(text, file = "") {
    const { state } = this;
    if (!file) this.add({ contentType: "inputText", text });
    if (!file && state.history[state.history.length - 1] !== text) state.history.push(text);
    this.setStatus("running");
    let status = "done";
    for (const line of text.split("\n")) status = await this.line(line.trim(), file) ?? status;
    this.setStatus("idle");
    this.notify("workspace/changed", {});
    return { status, seconds: 0.0123 };
  }
  async line(line, file) {
    const { state } = this;
    if (/^(plot|surf|stem)\(/.test(line)) {
      state.model = exampleModel(line.startsWith("surf") ? "surface" : "plot");
      this.changeFigure();
    } else if (/nosuch/.test(line)) {
      const where = file ? file.slice(file.lastIndexOf("/") + 1) : "the console";
      this.add({
        contentType: "error",
        text: `Error at Line 2(5) of ${where}. Variable or function named "nosuch" not found.
    y = 2*nosuch
          ^`,
        message: { file: file || null, line: file ? 2 : 1, column: 5 }
      });
      return "failed";
    } else if (line.startsWith("input(")) {
      this.notify("console/prompt", { text: "How many?" });
      this.setStatus("waitInput");
      const answer = await new Promise((resolve) => {
        state.answer = resolve;
      });
      this.setStatus("running");
      this.add({ contentType: "doubleArray", varName: "ans", text: `ans = 
 ${answer}` });
    } else if (line.startsWith("pause(")) {
      this.setStatus("paused");
      await new Promise((resolve) => {
        state.answer = resolve;
      });
      this.setStatus("running");
    } else if (line === "forever") {
      await new Promise((resolve) => {
        state.answer = resolve;
      });
    } else if (/^many\(/.test(line)) {
      for (let k = 0; k < Number(/\d+/.exec(line)[0]); k++)
        this.add({ contentType: "doubleArray", text: `k = 
 ${k}` });
    } else if (/^\w+ ?= ?magic/.test(line)) {
      const text = " 16    2    3   13\n  5   11   10    8\n  9    7    6   12\n  4   14   15    1";
      state.variables = [
        ...state.variables.filter((v) => v.name !== "A"),
        { name: "A", class: "double", size: [4, 4], bytes: 128, preview: "16 2 3 13; 5 11 10 8; \u2026" }
      ];
      this.add({ contentType: "doubleArray", varName: "A", text: `A = 
${text}` });
    } else if (line && !line.endsWith(";") && !line.startsWith("%")) {
      const name = /^(\w+) ?=/.exec(line)?.[1] ?? "ans";
      state.variables = [
        ...state.variables.filter((v) => v.name !== name),
        { name, class: "double", size: [1, 3], bytes: 24, preview: "1.0000 1.5000 1.8333" }
      ];
      this.add({ contentType: "doubleArray", varName: name, text: `${name} = 
 1.0000   1.5000   1.8333` });
    }
    return void 0;
  }
  changeFigure() {
    this.state.revision++;
    this.notify("figure/changed", { kind: this.kind, revision: this.state.revision });
  }
  get kind() {
    return !this.state.model ? "none" : "surfaces" in this.state.model ? "surface" : "plot";
  }
  get figure() {
    return { kind: this.kind, model: this.state.model, revision: this.state.revision };
  }
  file(path) {
    const text = this.state.files.get(path);
    if (typeof text !== "string") throw new Alert(`Failed to load "${path}"`);
    return text;
  }
  list(path) {
    const inside = path ? `${path}/` : "";
    return [...this.state.files].filter(([name]) => name.startsWith(inside) && name !== path && !name.slice(inside.length).includes("/")).sort(([a], [b]) => a.localeCompare(b)).map(([relativePath, text]) => ({
      id: relativePath,
      relativePath,
      isFolder: text === null,
      size: text?.length ?? null
    }));
  }
  make(folder2, name, content) {
    if (!/^[A-Za-z][A-Za-z0-9_]*(\.(m|csv|txt|dat))?$/.test(name)) {
      throw new Alert(
        "Invalid File Name",
        "Only letters, numbers, and underscore are allowed in a file name. A valid name cannot start with a number or underscore."
      );
    }
    const path = folder2 ? `${folder2}/${name}` : name;
    this.state.files.set(path, content);
    this.notify("files/changed", { path: folder2 });
    return { path };
  }
};
var kColors = [
  [/%.*/, "comments", "tertiary label color"],
  [/'[^'\n]*'/, "characterArray", "system purple"],
  [/\b(for|if|end|while|else|function|return)\b/, "keyword", "system blue"],
  [new RegExp(`\\b(${kBuiltIns.join("|")}|cos|exp|title|legend|pi)\\b`), "builtInFunction", "system orange"],
  [/\b\d+\.?\d*/, "number", "system green"]
];
function colors(text) {
  const all = new RegExp(kColors.map(([pattern]) => `(?:${pattern.source})`).join("|"), "g");
  return [...text.matchAll(all)].map((match) => {
    const [, type, color] = kColors.find(([pattern]) => new RegExp(`^(?:${pattern.source})$`).test(match[0])) ?? kColors[4];
    return { start: match.index, length: match[0].length, type, color };
  });
}

// tests/browser/server.ts
var kPolicy = "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; img-src 'self' data: blob:; font-src 'self'; connect-src 'self'; worker-src 'self'; manifest-src 'self'; frame-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'self'";
var frameHeaders = (host) => ({
  "Content-Security-Policy": `sandbox allow-scripts; default-src 'none'; script-src http://${host}/frame/; style-src http://${host}/frame/; font-src http://${host}/frame/; img-src data:; frame-ancestors 'self'; base-uri 'none'; form-action 'none'`,
  "Cross-Origin-Resource-Policy": "cross-origin",
  "Access-Control-Allow-Origin": "*"
});
var kTypes = {
  ".html": "text/html; charset=utf-8",
  ".js": "text/javascript",
  ".css": "text/css",
  ".svg": "image/svg+xml",
  ".png": "image/png",
  ".woff2": "font/woff2",
  ".json": "application/json",
  ".webmanifest": "application/manifest+json",
  ".txt": "text/plain; charset=utf-8"
};
var ofVersion = (worker, name) => String(worker).replace(/const version = '\w+'/, `const version = '${name}'`);
async function serve(dist) {
  const session = new FakeSession();
  const sockets = /* @__PURE__ */ new Set();
  let version = "";
  const server2 = createServer((request, response) => {
    const path = normalize(new URL(request.url ?? "/", "http://x").pathname);
    const file = join(dist, path === "/" ? "index.html" : path);
    readFile(file).then(
      (content) => {
        response.writeHead(200, {
          "Content-Type": kTypes[extname(file)] ?? "application/octet-stream",
          "Content-Security-Policy": kPolicy,
          "X-Content-Type-Options": "nosniff",
          "Referrer-Policy": "no-referrer",
          "Cross-Origin-Embedder-Policy": "require-corp",
          "Cross-Origin-Resource-Policy": "same-origin",
          ...path.startsWith("/frame/") ? frameHeaders(request.headers.host) : {}
        }).end(version && path === "/worker.js" ? ofVersion(content, version) : content);
      },
      () => response.writeHead(404).end()
    );
  });
  new WebSocketServer({ server: server2, path: "/session", maxPayload: 64 << 20 }).on("connection", (socket) => {
    sockets.add(socket);
    socket.on("close", () => sockets.delete(socket));
    const send = (text) => socket.send(text);
    const leave = session.join(send);
    socket.on("message", (data) => void session.receive(String(data), send));
    socket.on("close", leave);
  });
  await new Promise((resolve) => server2.listen(0, "127.0.0.1", resolve));
  const { port } = server2.address();
  return {
    address: `http://127.0.0.1:${port}/`,
    session,
    server: server2,
    renew: (name) => {
      version = name;
    },
    drop: () => sockets.forEach((socket) => socket.terminate()),
    close: () => {
      sockets.forEach((socket) => socket.terminate());
      server2.close();
      server2.closeAllConnections();
    }
  };
}

// tests/browser/measure.ts
var kTurns = 9;
var median = (all) => all.sort((a, b) => a - b)[all.length >> 1];
var row = (what, all) => console.log(`| ${what} | ${median(all).toFixed(0)} ms | ${Math.max(...all).toFixed(0)} ms |`);
var given = process.argv[2];
var server = given ? null : await serve(new URL("../../dist", import.meta.url).pathname);
var address = given ?? server.address;
var browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  args: ["--no-sandbox"]
});
var context = await browser.newContext({ viewport: { width: 390, height: 844 }, serviceWorkers: "block" });
await context.addInitScript(() => localStorage.setItem("kelo.preferences", '{"tourSeen":true,"keyboard":"system"}'));
function typeAtOnce() {
  const times2 = window.times = {};
  const look = () => {
    const field = document.querySelector("#first textarea, .composer .cm-content");
    if (field && times2.first === void 0) {
      field.focus();
      document.execCommand("insertText", false, "x");
      times2.first = Infinity;
      requestAnimationFrame(() => {
        times2.first = performance.now();
      });
    }
    if (document.querySelector(".composer .cm-content")?.textContent === "x") {
      times2.taken = performance.now();
    } else requestAnimationFrame(look);
  };
  requestAnimationFrame(look);
}
async function open(rate, script) {
  const page3 = await context.newPage();
  if (script) await page3.addInitScript(script);
  const client = await context.newCDPSession(page3);
  await client.send("Emulation.setCPUThrottlingRate", { rate });
  await page3.goto(address);
  return [page3, client];
}
async function firstInput() {
  const [page3] = await open(6, typeAtOnce);
  await page3.waitForTimeout(4e3);
  const times2 = await page3.evaluate(() => window.times);
  await page3.close();
  return times2;
}
async function plainPage() {
  const page3 = await context.newPage();
  const client = await context.newCDPSession(page3);
  await client.send("Emulation.setCPUThrottlingRate", { rate: 6 });
  await page3.goto(new URL("/licences.txt", address).href);
  await page3.waitForTimeout(1500);
  const time = await page3.evaluate(() => performance.getEntriesByType("paint")[0]?.startTime ?? NaN);
  await page3.close();
  return time;
}
async function plainField() {
  const plain2 = await context.newPage();
  await plain2.setContent('<div class="cm-content" contenteditable>text</div>');
  return plain2;
}
async function keys(inConsole) {
  const part = async (name, field) => ({
    ...{ name, field, client: await context.newCDPSession(field) },
    ...{ clock: [], processor: [] }
  });
  const fields = [await part("a plain field", await plainField()), await part("the console", inConsole)];
  for (let round = 0; round < 3; round++) {
    for (const { field, client, clock, processor } of fields) {
      await field.bringToFront();
      await field.locator(".cm-content").first().focus();
      await client.send("Emulation.setCPUThrottlingRate", { rate: 1 });
      processor.push(...await processorTime(browser, field, 10));
      await client.send("Emulation.setCPUThrottlingRate", { rate: 6 });
      await field.waitForTimeout(300);
      clock.push(...await keyToScreen(browser, field, 10));
    }
  }
  for (const { name, clock, processor } of fields) {
    row(`key to screen in ${name}`, clock);
    row(`key to screen in ${name}, processor time x 6`, processor.map((time) => 6 * time));
  }
  await fields[0].field.close();
}
await open(1).then(([page3]) => page3.waitForTimeout(500).then(() => page3.close()));
console.log("| at a sixfold slower processor | median | longest |\n|---|---|---|");
var plain = [];
var times = [];
for (let k = 0; k < kTurns; k++) {
  plain.push(await plainPage());
  times.push(await firstInput());
}
row("a page of plain text, drawn", plain);
row("first input accepted and drawn", times.map(({ first }) => first));
row("the console's own field has taken it over", times.map(({ taken }) => taken));
var [page2] = await open(6);
await page2.locator(".composer .cm-content").click();
await keys(page2);
await page2.bringToFront();
if (given) {
  const stops = [];
  for (let k = 0; k < kTurns; k++) {
    await page2.keyboard.press("Control+a");
    await page2.keyboard.insertText("k = 0; while 1 k = k + 1; end".replace("1 k", "1\nk").replace("; end", ";\nend"));
    await page2.keyboard.press("Control+Enter");
    await page2.getByRole("button", { name: "Stop" }).waitFor();
    await page2.waitForTimeout(300);
    stops.push(
      await page2.evaluate(
        () => new Promise((resolve) => {
          const began = performance.now();
          document.querySelector(".run-button.danger").click();
          const look = () => {
            if (document.querySelector(".run-button.danger")) requestAnimationFrame(look);
            else resolve(performance.now() - began);
          };
          look();
        })
      )
    );
  }
  row("Stop of an endless loop", stops);
  await frames("x = linspace(0, 100, 1e6);\nplot(x, sin(x) + 0.1*rand(size(x)))", "pan of 1e6 points");
  await frames("[X, Y] = meshgrid(linspace(-3, 3, 200));\nsurf(X, Y, sin(X) .* cos(Y))", "turn of 200 x 200 points");
}
async function frames(text, what) {
  const wide = await browser.newContext({ viewport: { width: 1440, height: 900 }, serviceWorkers: "block" });
  const figure = await wide.newPage();
  await figure.goto(address);
  await figure.keyboard.press("Escape");
  await figure.locator(".composer .cm-content").click();
  await figure.keyboard.insertText(text);
  await figure.keyboard.press("Control+Enter");
  await figure.waitForTimeout(4e3);
  const { x, y } = await figure.locator(".figure-frame canvas").boundingBox();
  await figure.mouse.move(x + 100, y + 300);
  await figure.mouse.down();
  await figure.mouse.move(x + 115, y + 300);
  await figure.waitForTimeout(700);
  const times2 = figure.evaluate(async () => {
    const all = [];
    for (let k = 0, last = performance.now(); k < 90; k++) {
      const now = await new Promise(requestAnimationFrame);
      all.push(now - last);
      last = now;
    }
    return all;
  });
  for (let k = 0; k < 200; k++) {
    await figure.mouse.move(x + 115 + k, y + 300);
    await figure.waitForTimeout(6);
  }
  row(`between pictures, ${what}`, await times2);
  await wide.close();
}
await browser.close();
server?.close();
