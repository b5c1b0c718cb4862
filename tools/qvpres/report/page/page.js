'use strict';
(() => {
  // The columns of nodes, as ReportData.h tells them.
  const data = JSON.parse(document.getElementById('data').textContent);
  const strings = data.strings;
  const nodes = data.nodes;
  const count = nodes.parent.length;
  const chunk = 100;       // children that are shown at once
  const mostResults = 200;
  const mostTiles = 80;

  const byId = (id) => document.getElementById(id);
  const grouped = (number) => number.toLocaleString('en');
  const plural = (number, word) => `${grouped(number)} ${word}${number === 1 ? '' : 's'}`;
  const percent = (part, whole) => `${(whole === 0 ? 0 : 100 * part / whole).toFixed(1)} %`;

  // An element. Texts are set as texts, so that nothing in the data can become markup.
  function element(tag, properties = {}, ...children) {
    const made = tag.startsWith('svg:') ? document.createElementNS('http://www.w3.org/2000/svg', tag.slice(4))
                                        : document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) {
      if (name === 'text') {
        made.textContent = value;
      } else if (name.startsWith('on')) {
        made.addEventListener(name.slice(2), value);
      } else if (value !== undefined) {
        made.setAttribute(name, value);
      }
    }
    made.append(...children);
    return made;
  }

  // The children of every node, one behind the other; those of a node from start[node] to start[node + 1].
  const start = new Int32Array(count + 1);
  const children = new Int32Array(count);
  for (let node = 1; node < count; ++node) {
    ++start[nodes.parent[node] + 1];
  }
  for (let node = 0; node < count; ++node) {
    start[node + 1] += start[node];
  }
  const filled = start.slice();
  for (let node = 1; node < count; ++node) {
    children[filled[nodes.parent[node]]++] = node;
  }
  const childCount = (node) => start[node + 1] - start[node];
  const childAt = (node, i) => children[start[node] + i];

  const nameOf = (node) => (node === 0 ? data.title : strings[nodes.name[node]]);
  const typeOf = (node) => strings[nodes.type[node]];
  const isElement = (node) => node !== 0 && nodes.id[node] === 0 && /^\d+$/.test(strings[nodes.name[node]]);
  function labelOf(node) {
    const short = strings[nodes.short[node]];
    const name = isElement(node) ? `[${nameOf(node)}]` : nameOf(node);
    return short !== '' && short !== name ? `${name} (${short})` : name;
  }
  function pathOf(node) {
    const steps = [];
    for (; node > 0; node = nodes.parent[node]) {
      steps.unshift(strings[nodes.name[node]]);
    }
    return `/${steps.join('/')}`;
  }
  function insideInWords(node) {
    const type = typeOf(node);
    const inside = childCount(node);
    if (type === 'structure list') {
      return plural(inside, 'structure');
    }
    if (type.startsWith('map') || type === 'structure map') {
      return inside === 1 ? '1 entry' : `${grouped(inside)} entries`;
    }
    return plural(inside, 'parameter');
  }
  const valueOf = (node) => (childCount(node) > 0 ? insideInWords(node) : strings[nodes.value[node]]);

  byId('facts').textContent = `${plural(data.characters, 'character')}, ${plural(count - 1, 'value')} of namespace ` +
    `${data.namespace}, ${data.names} names`;

  // ---- Light and dark

  const theme = byId('theme');
  const prefersDark = window.matchMedia('(prefers-color-scheme: dark)');
  const isDark = () => (document.documentElement.dataset.theme ?? (prefersDark.matches ? 'dark' : 'light')) === 'dark';
  function showTheme() {
    theme.textContent = isDark() ? 'Light' : 'Dark';
    theme.setAttribute('aria-label', isDark() ? 'Switch to light colours' : 'Switch to dark colours');
    theme.removeAttribute('aria-pressed');
  }
  theme.addEventListener('click', () => {
    document.documentElement.dataset.theme = isDark() ? 'light' : 'dark';
    showTheme();
  });
  prefersDark.addEventListener('change', showTheme);
  showTheme();

  // ---- Findings

  function findingItem(finding) {
    const nearest = finding.nearest ? ` Did you mean ${finding.nearest.map((name) => `"${name}"`).join(' or ')}?` : '';
    const where = finding.path === '' ? `line ${finding.line}` : finding.path;
    return element('li', {},
      element('span', {class: `sort ${finding.severity}`, text: finding.severity}), ' ',
      element('button', {type: 'button', class: 'where mono', text: where, onclick: () => reveal(finding.node, true)}),
      ` ${finding.message}.${nearest} `,
      element('span', {class: 'faint', text: `line ${grouped(finding.line)}, column ${grouped(finding.column)}`}));
  }

  function showFindings() {
    const body = byId('findings-body');
    const errors = data.findings.filter((finding) => finding.severity === 'error').length;
    const lenient = data.findings.length - errors;
    if (data.findings.length === 0) {
      body.append(element('p', {text: 'The text reads without errors, and reading is lenient about nothing in it.'}));
      return;
    }
    const leniencies = lenient === 1 ? '1 leniency' : `${grouped(lenient)} leniencies`;
    body.append(
      element('p', {text: `${plural(errors, 'error')}, ${leniencies}${data.findingsCut ? ' and more' : ''}.`}),
      element('ol', {tabindex: '0', 'aria-label': 'Findings'}, ...data.findings.map(findingItem)));
  }

  // ---- Plots

  const plotWidth = 640;
  const plotHeight = 220;
  const margin = {left: 8, right: 8, top: 24, bottom: 26};

  // What stands at a place of the plot, by elements or by parts of several.
  function pointsOf(list) {
    if (list.elements) {
      const points = [];
      for (const [first, step, length, packed, isNull] of list.elements) {
        for (let i = 0; i < length; ++i) {
          const value = first + i * step;
          points.push(isNull ? null : {low: value, high: value, packed: packed === 1, from: points.length, to: points.length});
        }
      }
      return points;
    }
    return list.parts.map((part, i) => {
      const from = Math.floor(list.count * i / list.parts.length);
      const to = Math.max(from, Math.floor(list.count * (i + 1) / list.parts.length) - 1);
      return part && {low: part[0], high: part[1], packed: part[2] >= 0.5, from, to};
    });
  }

  function pointInWords(point, index, total) {
    if (!point) {
      return `${index + 1} of ${grouped(total)}: null`;
    }
    if (point.from === point.to) {
      return `element ${grouped(point.from)}: ${point.low}${point.packed ? ', in a run' : ''}`;
    }
    const range = point.low === point.high ? `${point.low}` : `${point.low} to ${point.high}`;
    return `elements ${grouped(point.from)} to ${grouped(point.to)}: ${range}${point.packed ? ', in runs' : ''}`;
  }

  function scales(list, length) {
    const span = list.max - list.min;
    const inner = {width: plotWidth - margin.left - margin.right, height: plotHeight - margin.top - margin.bottom};
    return {
      x: (i) => margin.left + (length === 1 ? inner.width / 2 : inner.width * i / (length - 1)),
      bar: inner.width / length,
      barX: (i) => margin.left + inner.width * i / length,
      y: (value) => margin.top + (span === 0 ? inner.height / 2 : inner.height * (list.max - value) / span),
    };
  }

  // Elements as a line; what stands in runs again above it, in its own colour.
  function linePaths(points, scale) {
    const paths = {plain: '', packed: ''};
    points.forEach((point, i) => {
      if (!point) {
        return;
      }
      const place = `${scale.x(i).toFixed(1)} ${scale.y(point.low).toFixed(1)}`;
      const before = i > 0 ? points[i - 1] : null;
      paths.plain += `${before ? 'L' : 'M'}${place}`;
      if (point.packed) {
        paths.packed += `${before && before.packed ? 'L' : 'M'}${place}`;
      }
    });
    return paths;
  }

  // Parts as bars from the lowest to the highest value in them.
  function barPaths(points, scale) {
    const paths = {plain: '', packed: ''};
    points.forEach((point, i) => {
      if (point) {
        const top = scale.y(point.high);
        const bottom = Math.max(scale.y(point.low), top + 1.5);
        const bar = `M${scale.barX(i).toFixed(1)} ${top.toFixed(1)}h${scale.bar.toFixed(2)}V${bottom.toFixed(1)}` +
          `h${(-scale.bar).toFixed(2)}Z`;
        paths[point.packed ? 'packed' : 'plain'] += bar;
      }
    });
    return paths;
  }

  function axes(list, scale) {
    const parts = [
      element('svg:text', {x: margin.left, y: 17, text: `${list.max}`}),
      element('svg:text', {x: margin.left, y: plotHeight - 7, text: `${list.min}`}),
      element('svg:text', {x: plotWidth - margin.right, y: plotHeight - 7, 'text-anchor': 'end',
        text: `${grouped(list.count)} elements`}),
    ];
    if (list.min < 0 && list.max > 0) {
      const zero = scale.y(0).toFixed(1);
      parts.unshift(element('svg:line', {class: 'grid', x1: margin.left, x2: plotWidth - margin.right, y1: zero, y2: zero}));
    }
    return parts;
  }

  function dots(points, scale) {
    return points.flatMap((point, i) => (point
      ? [element('svg:circle', {class: point.packed ? 'dot-packed' : 'dot-plain', r: 2.5,
          cx: scale.x(i).toFixed(1), cy: scale.y(point.low).toFixed(1)})]
      : []));
  }

  // Reads values under the pointer, and by the arrow keys.
  function addReadout(svg, points, scale, exact, readout) {
    const cursor = element('svg:line', {class: 'cursor', y1: margin.top, y2: plotHeight - margin.bottom, visibility: 'hidden'});
    let at = -1;
    const show = (index) => {
      at = Math.min(Math.max(index, 0), points.length - 1);
      const x = exact ? scale.x(at) : scale.barX(at) + scale.bar / 2;
      cursor.setAttribute('x1', x);
      cursor.setAttribute('x2', x);
      cursor.setAttribute('visibility', 'visible');
      const words = pointInWords(points[at], at, points.length);
      readout.textContent = words;
      svg.setAttribute('aria-valuenow', at);
      svg.setAttribute('aria-valuetext', words);
    };
    svg.append(cursor);
    svg.addEventListener('pointermove', (event) => {
      const box = svg.getBoundingClientRect();
      const x = (event.clientX - box.left) / box.width * plotWidth - margin.left;
      const share = x / (plotWidth - margin.left - margin.right);
      show(exact ? Math.round(share * (points.length - 1)) : Math.floor(share * points.length));
    });
    svg.addEventListener('keydown', (event) => {
      const steps = {ArrowLeft: -1, ArrowRight: 1, PageUp: 10, PageDown: -10};
      if (event.key in steps) {
        show(at + steps[event.key]);
      } else if (event.key === 'Home' || event.key === 'End') {
        show(event.key === 'Home' ? 0 : points.length - 1);
      } else {
        return;
      }
      event.preventDefault();
    });
  }

  function plot(list, label) {
    const points = pointsOf(list);
    const scale = scales(list, points.length);
    const exact = list.elements !== undefined;
    const paths = exact ? linePaths(points, scale) : barPaths(points, scale);
    const readout = element('span', {class: 'mono readout'});
    const svg = element('svg:svg', {viewBox: `0 0 ${plotWidth} ${plotHeight}`, tabindex: '0', role: 'slider',
      'aria-label': `${label}: ${plural(list.count, 'number')} from ${list.min} to ${list.max}`,
      'aria-valuemin': 0, 'aria-valuemax': points.length - 1, 'aria-valuenow': 0},
    ...axes(list, scale));
    const style = exact ? {plain: 'line-plain', packed: 'line-packed'} : {plain: 'dot-plain', packed: 'dot-packed'};
    for (const sort of ['plain', 'packed']) {
      if (paths[sort] !== '') {
        svg.append(element('svg:path', {class: style[sort], d: paths[sort]}));
      }
    }
    if (exact && points.length <= 80) {
      svg.append(...dots(points, scale));
    }
    addReadout(svg, points, scale, exact, readout);
    const caption = element('figcaption', {}, element('span', {class: 'key plain', text: 'plain'}));
    if (list.runs > 0) {
      caption.append(element('span', {class: 'key packed',
        text: `${plural(list.runs, 'packed run')}, ${percent(list.inRuns, list.count)} of the elements`}));
    }
    caption.append(readout);
    return element('figure', {}, svg, caption);
  }

  // ---- What is known of one node

  function facts(pairs) {
    const list = element('dl');
    for (const [term, value] of pairs) {
      if (value !== '' && value !== undefined) {
        list.append(element('dt', {text: term}), element('dd', {text: value}));
      }
    }
    return list;
  }

  function showDetail(node) {
    const detail = byId('detail');
    const list = data.lists[node];
    detail.replaceChildren(
      element('h3', {text: labelOf(node)}),
      facts([
        ['path', pathOf(node)],
        ['identifier', nodes.id[node] === 0 ? '' : String(nodes.id[node])],
        ['type', typeOf(node)],
        ['value', valueOf(node)],
        ['remark', strings[nodes.remark[node]]],
        ['characters', `${grouped(nodes.size[node])}, ${percent(nodes.size[node], data.characters)} of the text`],
        ['mean', list && list.mean !== undefined ? String(Number(list.mean.toPrecision(6))) : ''],
      ]));
    if (list && list.min !== undefined) {
      detail.append(plot(list, labelOf(node)));
    }
    const own = data.findings.filter((finding) => finding.node === node);
    if (own.length > 0) {
      detail.append(element('ul', {}, ...own.map((finding) => element('li', {},
        element('span', {class: `sort ${finding.severity}`, text: finding.severity}), ` ${finding.message}`))));
    }
  }

  // ---- The tree

  const tree = byId('tree');
  let current = null;  // the item that has the focus of the tree

  function rowOf(node) {
    const inside = childCount(node) > 0;
    const row = element('div', {class: 'row'},
      element('span', {class: 'arrow', 'aria-hidden': 'true', text: inside ? '▸' : ''}),
      element('span', {class: 'name', text: labelOf(node)}),
      element('span', {class: 'type', text: typeOf(node)}),
      element('span', {class: 'value', text: valueOf(node)}));
    const remark = strings[nodes.remark[node]];
    const found = data.findings.some((finding) => finding.node === node);
    if (remark !== '' || found) {
      row.append(element('span', {class: 'warn', text: remark !== '' ? `⚠ ${remark}` : '⚠ see findings'}));
    }
    return row;
  }

  function itemOf(node, level, position, size) {
    return element('li', {role: 'treeitem', tabindex: '-1', 'data-node': node, 'aria-level': level,
      'aria-setsize': size, 'aria-posinset': position, 'aria-selected': 'false',
      'aria-expanded': childCount(node) > 0 ? 'false' : undefined}, rowOf(node));
  }

  // A line that stands for children that are not shown.
  function moreItem(parent, from, to, level) {
    return element('li', {role: 'treeitem', tabindex: '-1', 'data-more': parent, 'data-from': from, 'data-to': to,
      'aria-level': level, 'aria-selected': 'false'},
    element('div', {class: 'row'}, element('span', {class: 'arrow'}),
      element('span', {class: 'faint', text: `${grouped(to - from)} more, ${grouped(from)} to ${grouped(to - 1)}`})));
  }

  // Shows a window of the children, with a line for what is before and behind it.
  function fillGroup(group, node, from) {
    const size = childCount(node);
    const to = Math.min(from + chunk, size);
    const level = Number(group.parentElement.getAttribute('aria-level')) + 1;
    const items = [];
    if (from > 0) {
      items.push(moreItem(node, Math.max(0, from - chunk), from, level));
    }
    for (let i = from; i < to; ++i) {
      items.push(itemOf(childAt(node, i), level, i + 1, size));
    }
    if (to < size) {
      items.push(moreItem(node, to, size, level));
    }
    group.replaceChildren(...items);
  }

  function expand(item, from = 0) {
    const node = Number(item.dataset.node);
    if (item.dataset.node === undefined || childCount(node) === 0 || item.getAttribute('aria-expanded') === 'true') {
      return;
    }
    item.setAttribute('aria-expanded', 'true');
    item.querySelector('.arrow').textContent = '▾';
    const group = element('ul', {role: 'group'});
    item.append(group);
    fillGroup(group, node, from);
    indent(group);
  }

  function indent(group) {
    for (const item of group.children) {
      item.firstElementChild.style.paddingLeft = `${0.75 + 1.1 * (Number(item.getAttribute('aria-level')) - 1)}rem`;
    }
  }

  function collapse(item) {
    if (item.getAttribute('aria-expanded') !== 'true') {
      return;
    }
    item.setAttribute('aria-expanded', 'false');
    item.querySelector('.arrow').textContent = '▸';
    item.querySelector(':scope > [role="group"]').remove();
  }

  // Puts the window of a group elsewhere, and the focus on its first new line.
  function openMore(item) {
    const group = item.parentElement;
    const parent = Number(item.dataset.more);
    const from = Number(item.dataset.from);
    const forward = item === group.lastElementChild;
    fillGroup(group, parent, from);
    indent(group);
    const items = [...group.children].filter((each) => each.dataset.node !== undefined);
    select(forward ? items[0] : items[items.length - 1], true);
  }

  function select(item, focus) {
    if (current && current.isConnected) {
      current.setAttribute('tabindex', '-1');
      current.setAttribute('aria-selected', 'false');
    }
    current = item;
    current.setAttribute('tabindex', '0');
    current.setAttribute('aria-selected', 'true');
    if (focus) {
      current.focus({preventScroll: true});
      scrollIntoTree(current.firstElementChild);
    }
    if (item.dataset.node !== undefined) {
      showDetail(Number(item.dataset.node));
    }
  }

  // Scrolls the tree alone, and the page as little as it can.
  function scrollIntoTree(row) {
    const box = tree.getBoundingClientRect();
    const place = row.getBoundingClientRect();
    if (place.top < box.top || place.bottom > box.bottom) {
      tree.scrollTop += place.top - box.top - box.height / 3;
    }
    row.scrollIntoView({block: 'nearest'});
  }

  function reveal(node, focus) {
    const chain = [];
    for (let each = node; each >= 0; each = nodes.parent[each]) {
      chain.unshift(each);
    }
    let item = tree.firstElementChild;
    for (const next of chain.slice(1)) {
      const parent = nodes.parent[next];
      const position = children.indexOf(next, start[parent]) - start[parent];
      const find = () => item.querySelector(`:scope > [role="group"] > [data-node="${next}"]`);
      expand(item, Math.floor(position / chunk) * chunk);
      if (!find()) {
        const group = item.querySelector(':scope > [role="group"]');
        fillGroup(group, parent, Math.floor(position / chunk) * chunk);
        indent(group);
      }
      item = find();
    }
    select(item, focus);
  }

  const parentItem = (item) => item.parentElement.closest('[role="treeitem"]');
  function lastInside(item) {
    while (item.getAttribute('aria-expanded') === 'true') {
      item = item.querySelector(':scope > [role="group"]').lastElementChild;
    }
    return item;
  }
  function nextItem(item) {
    if (item.getAttribute('aria-expanded') === 'true') {
      return item.querySelector(':scope > [role="group"]').firstElementChild;
    }
    while (item && !item.nextElementSibling) {
      item = parentItem(item);
    }
    return item ? item.nextElementSibling : null;
  }
  function previousItem(item) {
    return item.previousElementSibling ? lastInside(item.previousElementSibling) : parentItem(item);
  }

  const treeKeys = {
    ArrowDown: (item) => nextItem(item),
    ArrowUp: (item) => previousItem(item),
    Home: () => tree.firstElementChild,
    End: () => lastInside(tree.firstElementChild),
    ArrowRight: (item) => {
      if (item.dataset.more !== undefined) {
        openMore(item);
        return null;
      }
      if (item.getAttribute('aria-expanded') === 'true') {
        return nextItem(item);
      }
      expand(item);
      return null;
    },
    ArrowLeft: (item) => {
      if (item.getAttribute('aria-expanded') === 'true') {
        collapse(item);
        return null;
      }
      return parentItem(item);
    },
    Enter: (item) => {
      activate(item);
      return null;
    },
    ' ': (item) => {
      activate(item);
      return null;
    },
    '*': (item) => {
      for (const each of [...item.parentElement.children]) {
        expand(each);
      }
      return null;
    },
  };

  function activate(item) {
    if (item.dataset.more !== undefined) {
      openMore(item);
    } else if (item.getAttribute('aria-expanded') === 'true') {
      collapse(item);
    } else {
      expand(item);
    }
  }

  tree.addEventListener('keydown', (event) => {
    const item = event.target.closest('[role="treeitem"]');
    const act = treeKeys[event.key];
    if (!item || !act || event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    event.preventDefault();
    const next = act(item);
    if (next) {
      select(next, true);
    }
  });
  tree.addEventListener('click', (event) => {
    const item = event.target.closest('[role="treeitem"]');
    if (!item) {
      return;
    }
    if (item.dataset.more === undefined) {
      select(item, true);
    }
    if (item.dataset.more !== undefined || event.target.classList.contains('arrow')) {
      activate(item);
    }
  });
  tree.addEventListener('dblclick', (event) => {
    const item = event.target.closest('[role="treeitem"]');
    if (item && item.dataset.node !== undefined && !event.target.classList.contains('arrow')) {
      activate(item);
    }
  });

  // ---- Search

  const search = byId('search');
  const results = byId('results');
  let lowerStrings = null;

  function findNodes(query) {
    if (lowerStrings === null) {
      lowerStrings = strings.map((text) => text.toLowerCase());
    }
    const sought = query.toLowerCase();
    const dashed = query.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`);  // names as texts spell them
    const hit = lowerStrings.map((text) => text.includes(sought) || text.includes(dashed));
    const found = [];
    let total = 0;
    for (let node = 1; node < count; ++node) {
      if (hit[nodes.name[node]] || hit[nodes.short[node]] || hit[nodes.value[node]] || String(nodes.id[node]) === query) {
        ++total;
        if (found.length < mostResults) {
          found.push(node);
        }
      }
    }
    return {found, total};
  }

  function runSearch() {
    const query = search.value.trim();
    results.replaceChildren();
    results.hidden = true;
    byId('search-count').textContent = '';
    if (query === '') {
      return;
    }
    const {found, total} = findNodes(query);
    byId('search-count').textContent =
      `${grouped(total)} found${total > found.length ? `, the first ${grouped(found.length)} shown` : ''}`;
    results.hidden = found.length === 0;
    results.append(...found.map((node) => element('li', {},
      element('button', {type: 'button', 'data-node': node, onclick: () => reveal(node, true)},
        element('span', {class: 'mono', text: pathOf(node)}), ' ',
        element('span', {class: 'faint', text: valueOf(node)})))));
  }

  let searchTimer = 0;
  search.addEventListener('input', () => {
    clearTimeout(searchTimer);
    searchTimer = setTimeout(runSearch, 120);
  });
  search.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') {
      search.value = '';
      runSearch();
    } else if (event.key === 'Enter' || event.key === 'ArrowDown') {
      clearTimeout(searchTimer);
      runSearch();
      const first = results.querySelector('button');
      if (first) {
        event.preventDefault();
        first.focus();
        if (event.key === 'Enter') {
          first.click();
        }
      }
    }
  });
  results.addEventListener('keydown', (event) => {
    const item = event.target.closest('li');
    const next = event.key === 'ArrowDown' ? item.nextElementSibling
      : event.key === 'ArrowUp' ? item.previousElementSibling : null;
    if (event.key === 'Escape' || (event.key === 'ArrowUp' && !next)) {
      search.focus();
      event.preventDefault();
    } else if (next) {
      next.firstElementChild.focus();
      event.preventDefault();
    }
  });
  document.addEventListener('keydown', (event) => {
    if (event.key === '/' && !(event.target instanceof HTMLInputElement)) {
      event.preventDefault();
      search.focus();
      search.select();
    }
  });

  // ---- The map of what takes space

  const map = byId('map');
  const kinds = ['single values', 'lists', 'maps', 'bags and structures', 'structure lists and maps', 'unknown names',
    'the rest'];
  let mapRoot = 0;

  function kindOf(node) {
    const type = typeOf(node);
    if (type.startsWith('list')) {
      return 1;
    }
    if (type.startsWith('map')) {
      return 2;
    }
    if (type === 'bag' || type === 'structure') {
      return 3;
    }
    if (type === 'structure list' || type === 'structure map') {
      return 4;
    }
    return type === 'unknown name' ? 5 : 0;
  }

  // The largest children, and one tile for all others and for what belongs to none.
  function tilesOf(node) {
    const all = [];
    for (let i = 0; i < childCount(node); ++i) {
      const child = childAt(node, i);
      all.push({node: child, size: nodes.size[child], label: labelOf(child), kind: kindOf(child)});
    }
    all.sort((left, right) => right.size - left.size);
    const tiles = all.slice(0, mostTiles);
    const rest = nodes.size[node] - tiles.reduce((sum, tile) => sum + tile.size, 0);
    if (rest > 0) {
      const hidden = all.length - tiles.length;
      tiles.push({node: -1, size: rest, kind: 6, label: hidden > 0 ? `${grouped(hidden)} smaller ones` : 'names and layout'});
    }
    return tiles;
  }

  // Rows of tiles along the shorter side, each as long as its tiles get no worse in shape.
  function squarify(tiles, box, place) {
    const total = tiles.reduce((sum, tile) => sum + tile.size, 0);
    const scale = box.width * box.height / total;
    let {x, y, width, height} = box;
    for (let i = 0; i < tiles.length;) {
      const side = Math.min(width, height);
      let sum = 0;
      let worst = Infinity;
      let end = i;
      for (; end < tiles.length; ++end) {
        const next = sum + tiles[end].size * scale;
        const shape = Math.max(side * side * tiles[i].size * scale / (next * next),
          next * next / (side * side * tiles[end].size * scale));
        if (shape > worst) {
          break;
        }
        worst = shape;
        sum = next;
      }
      const depth = sum / side;
      let along = 0;
      for (; i < end; ++i) {
        const length = tiles[i].size * scale / depth;
        if (width >= height) {
          place(tiles[i], {x, y: y + along, width: depth, height: length});
        } else {
          place(tiles[i], {x: x + along, y, width: length, height: depth});
        }
        along += length;
      }
      if (width >= height) {
        x += depth;
        width -= depth;
      } else {
        y += depth;
        height -= depth;
      }
    }
  }

  function tileOf(tile, box) {
    const share = percent(tile.size, data.characters);
    const label = `${tile.label}: ${plural(tile.size, 'character')}, ${share} of the text`;
    const made = element(tile.node < 0 ? 'div' : 'button', {class: `tile kind${tile.kind}`, title: label});
    if (tile.node >= 0) {
      made.type = 'button';
      made.setAttribute('aria-label', label);
      made.dataset.node = tile.node;
    }
    Object.assign(made.style, {left: `${box.x}px`, top: `${box.y}px`, width: `${box.width}px`, height: `${box.height}px`});
    if (box.width > 48 && box.height > 20) {
      made.append(element('span', {text: tile.label}));
    }
    if (box.width > 48 && box.height > 38) {
      made.append(element('span', {class: 'faint', text: share}));
    }
    return made;
  }

  function showMap(focus) {
    const tiles = tilesOf(mapRoot);
    const made = [];
    const box = {x: 0, y: 0, width: map.clientWidth, height: map.clientHeight};
    if (tiles.length > 0 && box.width > 0) {
      squarify(tiles, box, (tile, place) => made.push(tileOf(tile, place)));
    }
    map.replaceChildren(...made);
    const chain = [];
    for (let node = mapRoot; node >= 0; node = nodes.parent[node]) {
      chain.unshift(node);
    }
    byId('space-path').replaceChildren(...chain.flatMap((node, i) => [
      ...(i === 0 ? [] : ['›']),
      element('button', {type: 'button', text: labelOf(node), onclick: () => enterMap(node, true)})]));
    if (focus) {
      (map.querySelector('button') ?? byId('space-path').lastElementChild).focus();
    }
  }

  function enterMap(node, focus) {
    mapRoot = node;
    showMap(focus);
  }

  map.addEventListener('click', (event) => {
    const tile = event.target.closest('button');
    if (!tile) {
      return;
    }
    const node = Number(tile.dataset.node);
    if (childCount(node) > 0) {
      enterMap(node, true);
    } else {
      reveal(node, true);
    }
  });
  map.addEventListener('keydown', (event) => {
    if (event.key === 'Escape' && mapRoot !== 0) {
      enterMap(nodes.parent[mapRoot], true);
    }
  });

  byId('legend').append(...kinds.map((kind, i) => element('li', {}, element('i', {class: `kind${i}`}), kind)));

  // ---- Start

  showFindings();
  tree.append(itemOf(0, 1, 1, 1));
  expand(tree.firstElementChild);
  select(tree.firstElementChild, false);
  new ResizeObserver(() => showMap(false)).observe(map);
})();
