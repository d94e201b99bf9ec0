// common.js - what the pages' scripts share: the data, texts, colours, pieces of charts.
'use strict';
const data = JSON.parse(document.getElementById('data').textContent);
const $ = id => document.getElementById(id);

const percent = ratio =>
    ratio === Infinity ? '∞'
        : (ratio >= 1 ? '+' : '−') + Math.abs((ratio - 1) * 100).toFixed(1) + '%';
const clocks = value => value >= 100 ? value.toFixed(0) : value.toPrecision(3);

function make(name, text, className) {
    const element = document.createElement(name);
    if (text !== undefined) {
        element.textContent = text;
    }
    if (className) {
        element.className = className;
    }
    return element;
}

// Told apart by the colour-blind, on white and on black.
const dark = matchMedia('(prefers-color-scheme: dark)');
const palettes = [['#0072b2', '#d55e00', '#007d5a', '#b3559a', '#8c6d00', '#4a4fb5'],
                  ['#58b0ff', '#ff9a4d', '#3ddba8', '#f0a0d8', '#f0e442', '#a9adff']];
const mostCurves = palettes[0].length;
const colourAt = i => palettes[dark.matches ? 1 : 0][i % mostCurves];
const themed = name => getComputedStyle(document.documentElement).getPropertyValue(name).trim();

// Powers of ten, with 2 and 5 times them; even steps where the range is small.
function logSplits(min, max) {
    if (max / min < 4) {
        const power = 10 ** Math.floor(Math.log10((max - min) / 4));
        const step = [1, 2, 5, 10].find(times => times * power >= (max - min) / 6) * power;
        const first = Math.ceil(min / step);
        return Array.from({length: Math.floor(max / step) - first + 1},
                          (_, i) => Number(((first + i) * step).toPrecision(6)));
    }
    const steps = max / min > 300 ? [1] : max / min > 20 ? [1, 2, 5] : [1, 1.5, 2, 3, 5, 7];
    const splits = [];
    for (let power = Math.floor(Math.log10(min)); power <= Math.log10(max); ++power) {
        for (const step of steps) {
            const value = Number((step * 10 ** power).toPrecision(3));
            if (value >= min && value <= max) {
                splits.push(value);
            }
        }
    }
    return splits;
}

// An arrow key goes to a chart's next place.
function moveCursor(plot, event, show) {
    event.preventDefault();
    const last = plot.model.x.length - 1;
    plot.at = Math.min(last, Math.max(0, plot.at + (event.key === 'ArrowRight' ? 1 : -1)));
    plot.setCursor({left: plot.valToPos(plot.model.x[plot.at], 'x'),
                    top: plot.over.clientHeight / 2});
    show(plot.at);
}
