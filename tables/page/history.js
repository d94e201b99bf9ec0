// history.js - steps and curves over the page's data. Texts go into the page as text alone, and the
// steps were found before.
'use strict';
(() => {
const names = Object.keys(data.functions).sort(new Intl.Collator('en', {numeric: true}).compare);
// In a chain machines change, and it is one line all the same.
const machines = data.chain ? [''] : [...new Set(data.dates.map(date => date.machine))];
const pageRows = 100;
let rowLimit = pageRows;
let plot;
let backTo;        // what had the focus before the chart

const shown = {name: names[0], machine: machines[0]};
const machineOf = step => data.chain ? '' : step.machine;
const lengthsOf = step => step.first === step.last ? String(step.first) : `${step.first}..${step.last}`;
const labelOf = at => data.dates[at].label.slice(0, 60);

// ---- steps -------------------------------------------------------------------------------------
const columns = [
    ['Function', step => step.function],
    ['Lengths', lengthsOf],
    ['From', step => labelOf(step.date)],
    ['Change', step => percent(step.ratio)],
    ['Interval', step => `[${percent(step.low ?? 0)}, ${percent(step.high ?? Infinity)}]`],
    ...(machines.length > 1 ? [['Machine', step => step.machine.slice(0, 60)]] : []),
];

function rowOf(step) {
    const line = make('tr');
    columns.forEach(([, text], i) => {
        const cell = make(i === 0 ? 'th' : 'td');
        if (i === 0) {
            cell.scope = 'row';
            const button = make('button', text(step), 'link');
            button.type = 'button';
            button.title = step.function.slice(0, 200);
            cell.append(button);
        } else {
            cell.textContent = text(step);
        }
        line.append(cell);
    });
    line.addEventListener('click', () => {
        Object.assign(shown, {name: step.function, machine: machineOf(step)});
        showChart();
        backTo = line.querySelector('button');
        $('curves').scrollIntoView({block: 'nearest'});
        $('chart').focus({preventScroll: true});
    });
    return line;
}

function showRows() {
    const head = make('thead');
    const line = make('tr');
    for (const [title] of columns) {
        const cell = make('th', title);
        cell.scope = 'col';
        line.append(cell);
    }
    head.append(line);
    const body = make('tbody');
    body.append(...data.steps.slice(0, rowLimit).map(rowOf));
    $('rows').replaceChildren(head, body);
    $('more').hidden = data.steps.length <= rowLimit;
}

// ---- curve -------------------------------------------------------------------------------------
function modelOf() {
    const dates = data.dates.map((_, at) => at)
        .filter(at => data.chain || data.dates[at].machine === shown.machine);
    const steps = data.steps
        .filter(step => step.function === shown.name && machineOf(step) === shown.machine)
        .map(step => ({...step, x: dates.indexOf(step.date)}))
        .sort((a, b) => a.x - b.x);
    return {dates, steps, x: dates.map((_, i) => i),
            y: dates.map(at => data.functions[shown.name][at]),
            yTitle: data.chain ? 'clocks against the first release'
                               : 'clocks per element, mean of lengths'};
}

// A line between the dates of each step, and a band up to the next one.
function drawSteps(u, {steps, x}) {
    const {ctx, bbox} = u;
    ctx.save();
    ctx.beginPath();
    ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
    ctx.clip();
    steps.forEach((step, i) => {
        const next = steps.find(one => one.x > step.x);
        const from = u.valToPos(step.x - 0.5, 'x', true);
        const to = u.valToPos(next ? next.x - 0.5 : x.length, 'x', true);
        ctx.fillStyle = ctx.strokeStyle = themed(step.ratio > 1 ? '--slow' : '--fast');
        if (i === 0 || steps[i - 1].x < step.x) {
            ctx.globalAlpha = 0.12;
            ctx.fillRect(from, bbox.top, to - from, bbox.height);
        }
        ctx.globalAlpha = 1;
        ctx.lineWidth = 1.5 * devicePixelRatio;
        ctx.beginPath();
        ctx.moveTo(from, bbox.top);
        ctx.lineTo(from, bbox.top + bbox.height);
        ctx.stroke();
    });
    ctx.restore();
}

function showValues(index) {
    const {dates, steps, y} = plot.model;
    if (index === null || index === undefined) {
        $('values').replaceChildren(make('b', shown.name.slice(0, 200)),
            ...steps.map(step => make('span', `${percent(step.ratio)} at ${lengthsOf(step)} from ${labelOf(step.date)}`)));
        return;
    }
    $('values').replaceChildren(make('b', labelOf(dates[index])),
        make('span', y[index] === null ? 'not measured'
            : data.chain ? percent(y[index]) : clocks(y[index]) + ' clocks'),
        ...steps.filter(step => step.x === index)
            .map(step => make('span', `step ${percent(step.ratio)} at ${lengthsOf(step)}`)));
}

function showChart() {
    plot?.destroy();
    $('function').value = shown.name;
    $('machine').value = shown.machine;
    const model = modelOf();
    const box = $('chart');
    const ink = themed('--ink-soft');
    const line = {stroke: themed('--line'), width: 1};
    const colour = colourAt(0);
    const every = Math.ceil(model.x.length * 95 / Math.max(1, box.clientWidth - 60));
    plot = undefined;
    const made = new uPlot({
        width: Math.max(260, box.clientWidth), height: box.clientWidth < 600 ? 280 : 380,
        legend: {show: false},
        scales: {
            x: {time: false, range: [-0.5, model.x.length - 0.5]},
            y: {
                distr: 3,
                range: (u, min, max) => {
                    const room = Math.max(1.03, (max / min) ** 0.15);
                    return min > 0 ? [min / room, max * room] : [0.9, 1.1];
                },
            },
        },
        axes: [
            {stroke: ink, grid: line, ticks: line, size: 34,
             splits: () => model.x.filter(i => i % every === 0), filter: (u, splits) => splits,
             values: (u, splits) => splits.map(i => labelOf(model.dates[i]).slice(0, 10))},
            {stroke: ink, grid: line, ticks: line, label: model.yTitle, labelSize: 22, size: 54,
             splits: (u, axis, min, max) => logSplits(min, max), filter: (u, splits) => splits,
             values: (u, splits) => splits.map(String)},
        ],
        series: [{}, {label: shown.name.slice(0, 60), stroke: colour, width: 2, spanGaps: true,
                      points: {show: true, size: 6, stroke: colour, fill: colour}}],
        cursor: {drag: {x: false, y: false}, points: {size: 9}},
        hooks: {
            drawAxes: [u => drawSteps(u, model)],
            setCursor: [u => plot && showValues(u.cursor.idx)],
        },
    }, [model.x, model.y], box);
    plot = made;
    plot.model = model;
    plot.at = -1;
    box.setAttribute('aria-label', `${model.yTitle} over the dates: ${shown.name.slice(0, 60)}. ` +
        'Arrow keys read values, Escape goes back.');
    showValues(null);
}

$('function').replaceChildren(...names.map(name => new Option(name.slice(0, 60), name)));
$('machine').replaceChildren(...machines.map(name => new Option(name.slice(0, 60), name)));
$('machineLabel').hidden = machines.length < 2;
for (const [id, key] of [['function', 'name'], ['machine', 'machine']]) {
    $(id).addEventListener('change', event => {
        shown[key] = event.target.value;
        showChart();
    });
}
$('more').addEventListener('click', () => {
    rowLimit += pageRows;
    showRows();
});
$('chart').addEventListener('keydown', event => {
    if (event.key === 'Escape' && backTo?.isConnected) {
        backTo.focus();
    } else if (event.key === 'ArrowRight' || event.key === 'ArrowLeft') {
        moveCursor(plot, event, showValues);
    }
});
dark.addEventListener('change', showChart);
let resizing;
window.addEventListener('resize', () => {
    clearTimeout(resizing);
    resizing = setTimeout(showChart, 150);
});
if (data.steps.length > 0) {
    Object.assign(shown, {name: data.steps[0].function, machine: machineOf(data.steps[0])});
}
$('app').hidden = false;
showRows();
showChart();
document.documentElement.dataset.ready = '1';
})();
