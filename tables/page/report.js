// report.js - heat map, curves and table over the page's data. Texts go into the page as text alone,
// and what is called faster or slower was decided before.
'use strict';
(() => {
const compared = data.compared;

// ---- rows ------------------------------------------------------------------------------------
const noParms = '-,-,-,-,-,-,-';

function readSet(set) {
    const functions = set.functions.map(([base, type, accuracy, parms, unit]) => ({
        family: base + (parms === noParms ? '' : ' ' + parms),
        type, accuracy, unit,
        name: [base, type, accuracy].filter(part => part !== '-').join('_') +
            (parms === noParms ? '' : ' ' + parms),
        variant: [type, accuracy].filter(part => part !== '-').join('_'),
        rows: [],
    }));
    const columns = set.rows;
    const rows = columns.f.map((f, i) => {
        const row = {
            fn: functions[f], n: columns.n[i], c: columns.c[i], spread: columns.spread[i],
            after: columns.after[i], at: i,
        };
        if (compared) {
            row.b = columns.b[i];
            row.r = columns.r[i];
            row.lo = columns.lo[i];
            row.hi = columns.hi[i] ?? Infinity;
            row.call = data.calls[columns.v[i]];
            row.earlier = columns.earlier[i];
        }
        row.text = row.fn.name.toLowerCase();
        row.fn.rows.push(row);
        return row;
    });
    functions.forEach(fn => fn.rows.sort((a, b) => a.n - b.n));
    return {machine: set.machine, paired: set.paired, functions, rows,
            byName: new Map(functions.map(fn => [fn.name, fn]))};
}

const sets = data.sets.map(readSet);
let set = sets[0];

// ---- what is shown, kept in the address --------------------------------------------------------
const state = {q: '', family: '', type: '', accuracy: '', verdict: '', sort: '', down: '',
               machine: '0', mode: 'clocks', open: ''};
const defaults = {...state};

function readAddress() {
    const given = new URLSearchParams(location.hash.slice(1));
    for (const key in state) {
        state[key] = given.get(key) ?? defaults[key];
    }
    set = sets[state.machine] ?? sets[0];
}

function writeAddress() {
    const wanted = new URLSearchParams();
    for (const key in state) {
        if (state[key] !== defaults[key]) {
            wanted.set(key, state[key]);
        }
    }
    const text = wanted.toString();
    history.replaceState(null, '', text ? '#' + text : location.pathname + location.search);
}

// ---- texts -------------------------------------------------------------------------------------
const interval = row => `[${percent(row.lo)}, ${percent(row.hi)}]`;

function describe(row) {
    const where = `${row.fn.name}, length ${row.n}: `;
    return where + (compared
        ? `${percent(row.r)} ${interval(row)} ${row.call}, ${clocks(row.b)} → ${clocks(row.c)} clocks`
        : `${clocks(row.c)} clocks per ${row.fn.unit === 'e' ? 'element' : row.fn.unit}`);
}

// ---- filters -----------------------------------------------------------------------------------
// Each word must hold: >2% and <-1% of the change, a verdict, a length, or a part of the name.
function testOf(word) {
    const change = /^([<>])([-−+]?)(\d+(?:\.\d+)?)%$/.exec(word);
    if (change && compared) {
        const limit = 1 + Number((change[2] === '+' || !change[2] ? '' : '-') + change[3]) / 100;
        return change[1] === '>' ? row => row.r > limit : row => row.r < limit;
    }
    if (compared && data.calls.includes(word)) {
        return row => row.call === word;
    }
    const lengths = /^(\d+)(?:\.\.(\d+))?$/.exec(word);
    if (lengths) {
        const first = Number(lengths[1]);
        const last = Number(lengths[2] ?? lengths[1]);
        return row => row.n >= first && row.n <= last;
    }
    return row => row.text.includes(word);
}

function filtered() {
    const tests = state.q.toLowerCase().split(/\s+/).filter(Boolean).map(testOf);
    for (const key of ['family', 'type', 'accuracy']) {
        if (state[key]) {
            const wanted = state[key];
            tests.push(row => row.fn[key] === wanted);
        }
    }
    if (state.verdict) {
        tests.push(row => row.call === state.verdict);
    }
    return set.rows.filter(row => tests.every(test => test(row)));
}

const natural = new Intl.Collator('en', {numeric: true}).compare;
const unique = values => [...new Set(values)].sort(natural);

function fillSelect(select, values, all) {
    select.replaceChildren(new Option(all, ''), ...values.map(value => new Option(value, value)));
}

function fillFilters() {
    fillSelect($('family'), unique(set.functions.map(fn => fn.family)), 'all');
    fillSelect($('type'), unique(set.functions.map(fn => fn.type)), 'all');
    fillSelect($('accuracy'), unique(set.functions.map(fn => fn.accuracy)), 'all');
    fillSelect($('verdict'), ['slower', 'faster', 'undecided', 'same'], 'all');
    fillSelect($('add'), set.functions.map(fn => fn.name).sort(natural), 'choose');
}

function showFilters() {
    $('search').value = state.q;
    for (const key of ['family', 'type', 'accuracy', 'verdict', 'machine']) {
        $(key).value = state[key];
    }
    document.querySelectorAll('input[name=mode]').forEach(one => {
        one.checked = one.value === state.mode;
    });
}

// ---- table -------------------------------------------------------------------------------------
const columns = [
    {key: 'name', title: 'Function', of: row => row.fn.name, text: row => row.fn.name},
    {key: 'n', title: 'Length', of: row => row.n, text: row => String(row.n)},
    ...(compared ? [
        {key: 'r', title: 'Change', of: row => row.r, text: row => percent(row.r)},
        {key: 'lo', title: 'Interval', of: row => row.hi - row.lo, text: interval},
        {key: 'call', title: 'Verdict', of: row => row.call, text: row => row.call},
        {key: 'b', title: 'Before', of: row => row.b, text: row => clocks(row.b)},
        {key: 'c', title: 'After', of: row => row.c, text: row => clocks(row.c)},
    ] : [
        {key: 'c', title: 'Clocks per element', of: row => row.c, text: row => clocks(row.c)},
        {key: 'passes', title: 'Passes', of: row => row.after.length,
         text: row => String(row.after.length)},
        {key: 'spread', title: 'Spread', of: row => row.spread,
         text: row => (row.spread * 100).toFixed(1) + '%'},
    ]),
];
const pageRows = 100;
let found = [];
let rowLimit = pageRows;

function sorted(rows) {
    const column = columns.find(one => one.key === state.sort);
    if (!column) {
        return compared ? rows.sort((a, b) => b.r - a.r || a.at - b.at) : rows;
    }
    const sign = state.down ? -1 : 1;
    const order = typeof column.of(set.rows[0]) === 'string'
        ? (a, b) => natural(column.of(a), column.of(b))
        : (a, b) => column.of(a) - column.of(b);
    return rows.sort((a, b) => sign * order(a, b) || a.at - b.at);
}

function makeHead() {
    const line = make('tr');
    for (const column of columns) {
        const cell = make('th');
        cell.scope = 'col';
        const button = make('button', column.title);
        button.type = 'button';
        button.addEventListener('click', () => {
            state.down = state.sort === column.key && !state.down ? '1' : '';
            state.sort = column.key;
            update();
        });
        cell.append(button);
        line.append(cell);
    }
    const head = make('thead');
    head.append(line);
    $('rows').replaceChildren(head, make('tbody'));
}

function rowOf(row) {
    const line = make('tr');
    columns.forEach((column, i) => {
        const cell = make(i === 0 ? 'th' : 'td');
        if (i === 0) {
            cell.scope = 'row';
            const button = make('button', row.fn.name, 'link');
            button.type = 'button';
            button.title = row.fn.name.slice(0, 200);
            button.addEventListener('click', () => openFunction(row.fn.name, button));
            cell.append(button);
        } else if (column.key === 'call') {
            cell.append(make('span', row.call, 'call ' + row.call));
        } else {
            cell.textContent = column.text(row);
        }
        line.append(cell);
    });
    return line;
}

function showRows() {
    const body = $('rows').tBodies[0];
    body.replaceChildren(...found.slice(0, rowLimit).map(rowOf));
    $('shown').textContent = `${Math.min(rowLimit, found.length)} of ${found.length} rows shown` +
        (found.length < set.rows.length ? `, ${set.rows.length - found.length} filtered out` : '');
    $('more').hidden = found.length <= rowLimit;
    [...$('rows').tHead.rows[0].cells].forEach((cell, i) => {
        if (columns[i].key === state.sort) {
            cell.setAttribute('aria-sort', state.down ? 'descending' : 'ascending');
        } else {
            cell.removeAttribute('aria-sort');
        }
    });
}

// A cell that a spreadsheet would take for a formula gets a blank ahead.
const quoted = text => {
    const safe = /^[=@\t]|^[+-](?![\d.])/.test(text) ? ' ' + text : text;
    return /[",\n\r]/.test(safe) ? '"' + safe.replaceAll('"', '""') + '"' : safe;
};

function csv() {
    const head = ['function', 'type', 'accuracy', 'length', ...(compared
        ? ['ratio', 'low', 'high', 'verdict', 'clocks_before', 'clocks_after']
        : ['clocks_per_element', 'passes', 'spread'])];
    const lines = found.map(row => [row.fn.family, row.fn.type, row.fn.accuracy, row.n,
        ...(compared ? [row.r, row.lo, row.hi === Infinity ? '' : row.hi, row.call, row.b, row.c]
                     : [row.c, row.after.length, row.spread])]);
    return [head, ...lines].map(line => line.map(String).map(quoted).join(',')).join('\n') + '\n';
}

async function copy() {
    const text = csv();
    let done = true;
    try {
        await navigator.clipboard.writeText(text);
    } catch {
        const area = make('textarea', text);
        document.body.append(area);
        area.select();
        done = document.execCommand('copy');
        area.remove();
        $('copy').focus();
    }
    $('copied').textContent = done ? `${found.length} rows copied` : 'could not be copied';
}

// ---- heat map ----------------------------------------------------------------------------------
const steps = [0.5, 1, 2.5, 5, 10].map(times => times * data.threshold);
const logs = [];

// Steps of ratios are symmetric about 1; those of clocks are even on a logarithmic scale.
function colourOf(row) {
    if (!compared) {
        const [low, high] = logs;
        const share = high > low ? (Math.log(row.c) - low) / (high - low) : 0;
        return 'c' + Math.min(8, Math.max(0, Math.floor(share * 9)));
    }
    const away = Math.exp(Math.abs(Math.log(row.r))) - 1;
    const step = steps.filter(limit => away >= limit).length;
    return (step === 0 ? 's0' : (row.r > 1 ? 's' : 'f') + step) +
        (row.call === 'undecided' ? ' undecided' : row.call === 'same' ? '' : ' called');
}

function swatch(className, text) {
    const item = make('span', undefined, 'item');
    item.append(make('i', undefined, className), text);
    return item;
}

function showLegend() {
    const widest = Number((steps.at(-1) * 100).toPrecision(2)) + '%';
    $('legend').replaceChildren(...(compared ? [
        make('span', 'faster'),
        ...[5, 4, 3, 2, 1].map(i => swatch('f' + i, i === 5 ? '−' + widest : '')),
        swatch('s0', '0'),
        ...[1, 2, 3, 4, 5].map(i => swatch('s' + i, i === 5 ? '+' + widest : '')),
        make('span', 'slower'),
        swatch('s0 called', 'called'), swatch('s0 undecided', 'undecided'),
    ] : [
        make('span', clocks(Math.exp(logs[0]))),
        ...[0, 1, 2, 3, 4, 5, 6, 7, 8].map(i => swatch('c' + i, '')),
        make('span', clocks(Math.exp(logs[1])) + ' clocks per element'),
    ]));
}

let cells = [];   // by line of the map, the cells from left to right
let current;      // the cell that the Tab key reaches

function showMap() {
    const values = set.rows.map(row => Math.log(row.c)).sort((a, b) => a - b);
    logs[0] = values[Math.floor(values.length * 0.01)];
    logs[1] = values[Math.floor((values.length - 1) * 0.99)];
    $('mapTitle').textContent = compared ? 'Change by family, variant and length'
                                         : 'Clocks by family, variant and length';
    showLegend();
    const variants = unique(set.functions.map(fn => fn.variant));
    const lengths = [...new Set(set.rows.map(row => row.n))].sort((a, b) => a - b);
    const families = unique(set.functions.map(fn => fn.family));
    const places = new Map();
    for (const fn of set.functions) {
        const key = fn.family + '\n' + fn.variant;
        places.set(key, [...(places.get(key) ?? []), fn]);
    }
    $('readout').textContent = (lengths.length > 1
        ? `Each block: lengths ${lengths[0]} to ${lengths.at(-1)} from left to right. ` : '') +
        'A click opens curves; arrow keys move, Enter opens.';
    const table = $('map');
    table.classList.toggle('few', variants.length * lengths.length <= 40);
    const head = make('tr');
    const corner = make('td', undefined, 'corner');
    head.append(corner);
    for (const variant of variants) {
        const title = make('th', variant);
        title.scope = 'colgroup';
        title.colSpan = lengths.length;
        head.append(title);
    }
    const thead = make('thead');
    thead.append(head);
    const body = make('tbody');
    cells = [];
    for (const family of families) {
        const line = make('tr');
        const name = make('th', family.slice(0, 40));
        name.scope = 'row';
        name.title = family.slice(0, 200);
        line.append(name);
        const own = [];
        for (const variant of variants) {
            const fns = places.get(family + '\n' + variant);
            if (!fns) {
                const none = make('td', undefined, 'none group');
                none.colSpan = lengths.length;
                line.append(none);
                continue;
            }
            const byLength = new Map(fns.flatMap(fn => fn.rows).map(row => [row.n, row]));
            lengths.forEach((length, i) => {
                const row = byLength.get(length);
                const cell = make('td', undefined, i === 0 ? 'group' : '');
                if (row) {
                    cell.className += ' cell ' + colourOf(row);
                    cell.row = row;
                    cell.tabIndex = -1;
                    row.cell = cell;
                    own.push(cell);
                }
                line.append(cell);
            });
        }
        cells.push(own);
        body.append(line);
    }
    table.replaceChildren(thead, body);
    current = cells[0]?.[0];
    if (current) {
        current.tabIndex = 0;
    }
}

function goTo(cell) {
    current.tabIndex = -1;
    current = cell;
    cell.tabIndex = 0;
    cell.setAttribute('aria-label', describe(cell.row));
    cell.focus();
}

function keyOnMap(event) {
    const cell = event.target.closest('td.cell');
    if (!cell) {
        return;
    }
    const y = cells.findIndex(line => line.includes(cell));
    const x = cells[y].indexOf(cell);
    // Up and down keep the column as well as the lines allow.
    const nearest = line => line.reduce((best, one) =>
        Math.abs(one.offsetLeft - cell.offsetLeft) < Math.abs(best.offsetLeft - cell.offsetLeft)
            ? one : best);
    const to = {
        ArrowRight: cells[y][x + 1], ArrowLeft: cells[y][x - 1],
        ArrowDown: cells[y + 1] && nearest(cells[y + 1]),
        ArrowUp: cells[y - 1] && nearest(cells[y - 1]),
        Home: cells[y][0], End: cells[y].at(-1),
    };
    if (event.key === 'Enter' || event.key === ' ') {
        event.preventDefault();
        openFunction(cell.row.fn.name, cell);
    } else if (event.key in to) {
        event.preventDefault();
        if (to[event.key]) {
            goTo(to[event.key]);
        }
    }
}

function dimMap() {
    const all = found.length === set.rows.length;
    const shown = new Set(found);
    $('map').classList.toggle('dimmed', !all);
    for (const row of set.rows) {
        row.cell?.classList.toggle('in', !all && shown.has(row));
    }
}

// ---- curves ------------------------------------------------------------------------------------
let opened = [];   // names
let plot;
let backTo;        // what had the focus before the chart

const isChange = () => compared && state.mode === 'change';
const finite = value => Number.isFinite(value) ? value : null;

// What the chart shows, for the screen and for files.
function modelOf() {
    const fns = opened.map(name => set.byName.get(name));
    const x = [...new Set(fns.flatMap(fn => fn.rows.map(row => row.n)))].sort((a, b) => a - b);
    const curves = [];
    fns.forEach((fn, i) => {
        const at = x.map(length => fn.rows.find(row => row.n === length));
        const colour = colourAt(i);
        const values = of => at.map(row => row ? finite(of(row)) : null);
        const readings = (from, of) =>
            at.map(row => row ? row[from].map(d => of(row) * (1 + d / 1000)) : []);
        // Of one table, the band holds all its passes.
        const end = (ratio, pick) => row => compared ? row.b * row[ratio]
            : pick(row.c, ...row.after.map(d => row.c * (1 + d / 1000)));
        if (isChange()) {
            const change = ratio => (ratio - 1) * 100;
            curves.push({
                name: fn.name, colour, y: values(row => change(row.r)),
                low: values(row => change(row.lo)), high: values(row => change(row.hi)),
                points: set.paired ? at.map(row => row ? row.after.map((d, k) => change(row.r *
                    (1 + d / 1000) / (1 + row.earlier[k] / 1000))) : []) : x.map(() => []),
            });
        } else {
            curves.push({
                name: fn.name + (compared ? ', after' : ''), colour, y: values(row => row.c),
                low: values(end('lo', Math.min)),
                high: values(end('hi', Math.max)),
                points: readings('after', row => row.c),
            });
            if (compared) {
                curves.push({name: fn.name + ', before', colour, dash: [6, 4],
                             y: values(row => row.b), points: readings('earlier', row => row.b)});
            }
        }
    });
    return {x, curves, yTitle: isChange() ? 'change of clocks, percent' : 'clocks per element'};
}

const powerText = value => value >= 1024 && value % 1024 === 0 ? value / 1024 + 'K' : String(value);

// Intervals below the lines, single readings on them.
function drawBands(u, model) {
    const ctx = u.ctx;
    ctx.save();
    ctx.beginPath();
    ctx.rect(u.bbox.left, u.bbox.top, u.bbox.width, u.bbox.height);
    ctx.clip();
    const at = (i, value) => [u.valToPos(model.x[i], 'x', true), u.valToPos(value, 'y', true)];
    for (const curve of model.curves) {
        const known = model.x.map((_, i) => i).filter(i =>
            curve.low && curve.low[i] !== null && curve.high[i] !== null);
        ctx.fillStyle = ctx.strokeStyle = curve.colour;
        ctx.globalAlpha = 0.2;
        ctx.beginPath();
        known.forEach(i => ctx.lineTo(...at(i, curve.high[i])));
        known.reverse().forEach(i => ctx.lineTo(...at(i, curve.low[i])));
        ctx.fill();
        ctx.globalAlpha = 0.55;
        const radius = 1.6 * devicePixelRatio;
        curve.points.forEach((list, i) => list.forEach(value => {
            const [left, top] = at(i, value);
            ctx.beginPath();
            ctx.arc(left, top, radius, 0, 2 * Math.PI);
            curve.dash ? ctx.stroke() : ctx.fill();
        }));
    }
    ctx.restore();
}

function showValues(index) {
    const model = plot.model;
    if (index === null || index === undefined) {
        $('values').replaceChildren(...model.curves.map(curve => keyOf(curve, '')));
        return;
    }
    $('values').replaceChildren(make('b', 'length ' + model.x[index]), ...model.curves.map(curve => {
        const value = curve.y[index];
        return keyOf(curve, value === null ? '-' : isChange() ? percent(1 + value / 100) : clocks(value));
    }));
}

function keyOf(curve, value) {
    const item = make('span', undefined, 'item');
    const line = make('i', undefined, curve.dash ? 'line dashed' : 'line');
    line.style.borderColor = curve.colour;
    item.append(line, curve.name + (value ? ' ' : ''), make('b', value));
    return item;
}

function showChart() {
    plot?.destroy();
    plot = undefined;
    opened = opened.filter(name => set.byName.has(name));
    $('chips').replaceChildren(...opened.map((name, i) => {
        const item = make('li');
        const button = make('button', name.slice(0, 60) + ' ×');
        button.type = 'button';
        button.setAttribute('aria-label', 'Remove ' + name.slice(0, 60));
        button.style.borderColor = colourAt(i);
        button.addEventListener('click', () => {
            opened = opened.filter(one => one !== name);
            storeOpened();
            showChart();
            ($('chips').querySelector('button') ?? $('add')).focus();
        });
        item.append(button);
        return item;
    }));
    const box = $('chart');
    if (opened.length === 0) {
        $('values').replaceChildren('No function is open: choose a cell of the map or a row.');
        return;
    }
    const model = modelOf();
    const ink = themed('--ink-soft');
    const crowded = box.clientWidth < 45 * model.x.length;
    const line = {stroke: themed('--line'), width: 1};
    const options = {
        width: Math.max(260, box.clientWidth), height: box.clientWidth < 600 ? 280 : 380,
        legend: {show: false},
        scales: {
            x: {time: false, distr: 3, log: 2, range: (u, min, max) => [min / 1.15, max * 1.15]},
            y: isChange() ? {
                range: (u, min, max) => {
                    const far = Math.max(100 * data.threshold * 2, Math.abs(min), Math.abs(max)) * 1.2;
                    return [-far, far];
                },
            } : {
                distr: 3,
                range: (u, min, max) => {
                    const room = Math.max(1.12, (max / min) ** 0.08);
                    return [min / room, max * room];
                },
            },
        },
        axes: [
            {stroke: ink, grid: line, ticks: line, label: 'length', labelSize: 22, size: 34,
             splits: () => model.x,
             filter: (u, splits) => splits.map((value, i) => crowded && i % 2 ? null : value),
             values: (u, splits) => splits.map(value => value === null ? '' : powerText(value)), space: 30},
            {stroke: ink, grid: line, ticks: line, label: model.yTitle, labelSize: 22, size: 54,
             ...(isChange() ? {values: (u, splits) => splits.map(value => value + '%')} : {
                 splits: (u, axis, min, max) => logSplits(min, max),
                 filter: (u, splits) => splits,
                 values: (u, splits) => splits.map(value => String(value)),
             })},
        ],
        series: [{}, ...model.curves.map(curve => ({
            label: curve.name.slice(0, 60), stroke: curve.colour, width: 2, dash: curve.dash,
            points: {show: true, size: 6, stroke: curve.colour,
                     fill: curve.dash ? themed('--paper') : curve.colour},
            spanGaps: true,
        }))],
        cursor: {drag: {x: false, y: false}, points: {size: 9}},
        hooks: {
            drawAxes: [u => drawBands(u, model)],
            setCursor: [u => plot && showValues(u.cursor.idx)],
        },
    };
    const made = new uPlot(options, [model.x, ...model.curves.map(curve => curve.y)], box);
    plot = made;
    plot.model = model;
    plot.at = -1;
    box.setAttribute('aria-label', `${model.yTitle} over length: ` +
        opened.map(name => name.slice(0, 60)).join(', ') +
        '. Arrow keys read values, Escape goes back.');
    showValues(null);
}

function storeOpened() {
    state.open = opened.join('\n'); // which no name holds
    writeAddress();
}

function openFunction(name, from) {
    opened = $('keep').checked ? [...opened.filter(one => one !== name), name].slice(-mostCurves)
                               : [name];
    storeOpened();
    showChart();
    backTo = from;
    if (from) {
        $('curves').scrollIntoView({block: 'nearest'});
        $('chart').focus({preventScroll: true});
    }
}

function keyOnChart(event) {
    if (event.key === 'Escape' && backTo?.isConnected) {
        backTo.focus();
    } else if (plot && (event.key === 'ArrowRight' || event.key === 'ArrowLeft')) {
        moveCursor(plot, event, showValues);
    }
}

function save(blob, kind) {
    const link = make('a');
    link.href = URL.createObjectURL(blob);
    link.download = `curves.${kind}`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

const drawn = (name, attributes, text) => {
    const element = document.createElementNS('http://www.w3.org/2000/svg', name);
    for (const key in attributes) {
        element.setAttribute(key, attributes[key]);
    }
    if (text !== undefined) {
        element.textContent = text;
    }
    return element;
};

// The chart as it stands, drawn again as vectors.
function saveSvg() {
    if (!plot) {
        return;
    }
    const {x, curves, yTitle} = plot.model;
    const area = {left: plot.over.offsetLeft, top: plot.over.offsetTop + 8,
                  width: plot.over.clientWidth, height: plot.over.clientHeight};
    const width = plot.width;
    const height = plot.height + 16 + 18 * curves.length;
    const svg = drawn('svg', {xmlns: 'http://www.w3.org/2000/svg', width, height,
                              viewBox: `0 0 ${width} ${height}`,
                              'font-family': 'sans-serif', 'font-size': 12});
    svg.append(drawn('rect', {width, height, fill: 'white'}));
    const px = value => (area.left + plot.valToPos(value, 'x')).toFixed(1);
    const py = value => (area.top + plot.valToPos(value, 'y')).toFixed(1);
    for (const value of x) {
        svg.append(drawn('line', {x1: px(value), x2: px(value), y1: area.top,
                                  y2: area.top + area.height, stroke: '#ddd'}),
                   drawn('text', {x: px(value), y: area.top + area.height + 16,
                                  'text-anchor': 'middle'}, powerText(value)));
    }
    const {min, max} = plot.scales.y;
    for (const value of isChange() ? plot.axes[1]._splits : logSplits(min, max)) {
        svg.append(drawn('line', {x1: area.left, x2: area.left + area.width, y1: py(value),
                                  y2: py(value), stroke: '#ddd'}),
                   drawn('text', {x: area.left - 6, y: Number(py(value)) + 4,
                                  'text-anchor': 'end'}, String(value)));
    }
    svg.append(drawn('text', {x: 4, y: area.top - 2}, yTitle),
               drawn('text', {x: area.left + area.width, y: area.top + area.height + 32,
                              'text-anchor': 'end'}, 'length'));
    curves.forEach((curve, k) => {
        const known = x.map((_, i) => i).filter(i => curve.y[i] !== null);
        const banded = known.filter(i => curve.low && curve.low[i] !== null && curve.high[i] !== null);
        svg.append(drawn('polygon', {
            points: [...banded.map(i => px(x[i]) + ',' + py(curve.high[i])),
                     ...banded.reverse().map(i => px(x[i]) + ',' + py(curve.low[i]))].join(' '),
            fill: curve.colour, opacity: 0.2}));
        curve.points.forEach((list, i) => list.forEach(value => svg.append(drawn('circle', {
            cx: px(x[i]), cy: py(value), r: 1.6, fill: curve.dash ? 'none' : curve.colour,
            stroke: curve.colour, opacity: 0.55}))));
        svg.append(drawn('polyline', {
            points: known.map(i => px(x[i]) + ',' + py(curve.y[i])).join(' '), fill: 'none',
            stroke: curve.colour, 'stroke-width': 2, 'stroke-dasharray': curve.dash?.join(' ') ?? 'none'}));
        const top = plot.height + 16 + 18 * k;
        svg.append(drawn('line', {x1: area.left, x2: area.left + 24, y1: top, y2: top,
                                  stroke: curve.colour, 'stroke-width': 2,
                                  'stroke-dasharray': curve.dash?.join(' ') ?? 'none'}),
                   drawn('text', {x: area.left + 32, y: top + 4}, curve.name));
    });
    save(new Blob([new XMLSerializer().serializeToString(svg)], {type: 'image/svg+xml'}), 'svg');
}

function savePng() {
    if (!plot) {
        return;
    }
    const from = plot.ctx.canvas;
    const scale = devicePixelRatio;
    const canvas = make('canvas');
    canvas.width = from.width;
    canvas.height = from.height + (8 + 18 * plot.model.curves.length) * scale;
    const ctx = canvas.getContext('2d');
    ctx.fillStyle = themed('--paper');
    ctx.fillRect(0, 0, canvas.width, canvas.height);
    ctx.drawImage(from, 0, 0);
    ctx.font = `${12 * scale}px sans-serif`;
    plot.model.curves.forEach((curve, i) => {
        const top = from.height + (10 + 18 * i) * scale;
        ctx.strokeStyle = curve.colour;
        ctx.lineWidth = 2 * scale;
        ctx.setLineDash((curve.dash ?? []).map(part => part * scale));
        ctx.beginPath();
        ctx.moveTo(56 * scale, top);
        ctx.lineTo(80 * scale, top);
        ctx.stroke();
        ctx.fillStyle = themed('--ink');
        ctx.fillText(curve.name, 88 * scale, top + 4 * scale);
    });
    canvas.toBlob(blob => save(blob, 'png'));
}

// ---- all together ------------------------------------------------------------------------------
let dimmer;

function update() {
    found = sorted(filtered());
    rowLimit = pageRows;
    showRows();
    writeAddress();
    // The map may follow a little later than the typing.
    clearTimeout(dimmer);
    dimmer = setTimeout(dimMap, 120);
}

// The function that the first look should fall on.
function mostStriking() {
    const rank = row => row.call === 'slower' || row.call === 'faster' ? 2 : row.call === 'same' ? 1 : 0;
    return (compared ? set.rows : []).reduce((best, row) =>
        (rank(row) - rank(best) || row.r - best.r) > 0 ? row : best, set.rows[0]).fn.name;
}

function start() {
    readAddress();
    $('machineLabel').hidden = sets.length < 2;
    $('machine').replaceChildren(...sets.map((one, i) => new Option(one.machine.slice(0, 60), i)));
    $('verdictLabel').hidden = $('modeBox').hidden = !compared;
    $('search').placeholder = compared ? 'sin 64f  >2%  slower' : 'sin 64f  4096';
    fillFilters();
    showFilters();
    makeHead();
    showMap();
    opened = state.open ? state.open.split('\n').filter(name => set.byName.has(name)) : [];
    if (opened.length === 0) {
        opened = [mostStriking()];
    }
    $('app').hidden = false;
    showChart();
    update();
    performance.mark('chart');
    document.documentElement.dataset.ready = '1';
}

$('search').addEventListener('input', event => {
    state.q = event.target.value;
    update();
});
for (const key of ['family', 'type', 'accuracy', 'verdict']) {
    $(key).addEventListener('change', event => {
        state[key] = event.target.value;
        update();
    });
}
$('machine').addEventListener('change', event => {
    Object.assign(state, defaults, {machine: event.target.value, mode: state.mode});
    writeAddress();
    start();
});
$('clear').addEventListener('click', () => {
    Object.assign(state, {q: '', family: '', type: '', accuracy: '', verdict: ''});
    showFilters();
    update();
});
document.querySelectorAll('.counts li[class]').forEach(item => {
    const button = make('button');
    button.type = 'button';
    button.append(...item.childNodes);
    item.append(button);
    button.addEventListener('click', () => {
        state.verdict = item.className;
        showFilters();
        update();
    });
});
document.querySelectorAll('input[name=mode]').forEach(one => one.addEventListener('change', () => {
    state.mode = one.value;
    writeAddress();
    showChart();
}));
$('add').addEventListener('change', event => {
    if (event.target.value) {
        opened = [...opened.filter(one => one !== event.target.value), event.target.value]
            .slice(-mostCurves);
        storeOpened();
        showChart();
        event.target.value = '';
    }
});
$('more').addEventListener('click', () => {
    rowLimit += 500;
    showRows();
});
$('copy').addEventListener('click', copy);
$('svg').addEventListener('click', saveSvg);
$('png').addEventListener('click', savePng);
$('map').addEventListener('click', event => {
    const cell = event.target.closest('td.cell');
    if (cell) {
        goTo(cell);
        openFunction(cell.row.fn.name, cell);
    }
});
$('map').addEventListener('keydown', keyOnMap);
for (const kind of ['pointerover', 'focusin']) {
    $('map').addEventListener(kind, event => {
        const cell = event.target.closest('td.cell');
        if (cell) {
            cell.setAttribute('aria-label', describe(cell.row));
            $('readout').textContent = describe(cell.row);
        }
    });
}
$('chart').addEventListener('keydown', keyOnChart);
window.addEventListener('hashchange', start);
dark.addEventListener('change', showChart);
let resizing;
window.addEventListener('resize', () => {
    clearTimeout(resizing);
    resizing = setTimeout(showChart, 150);
});
start();
})();
