// report_test.mjs - the pages in a real browser, as its reader uses it; see run.sh.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, statSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import {pathToFileURL} from 'node:url';

const require = createRequire(join(process.env.PS_MODULES, 'package.json'));
const {chromium} = require('playwright-core');
const axe = readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');
const folder = mkdtempSync(join(tmpdir(), 'ps_report.'));
const titles = 'funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6,' +
    'scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n';

// A table of these functions; changeOf gives the ratio of pairs, without it the table is plain.
function table(name, functions, lengths, seed, changeOf, library = 'Trial, 1.0', computer = 'here') {
    let text = `CPU,Some Processor, 2x2.6 GHz\nComputer,${computer}\nLibrary,${library}\n${titles}`;
    let state = seed;
    const noise = () => {
        state = (state * 1103515245 + 12345) % 2147483648;
        return 1 + (state / 2147483648 - 0.5) * 0.004;
    };
    functions.forEach((fn, f) => lengths.forEach(length => {
        const base = (2 + f % 40) * (1 + 16 / length);
        const ratio = changeOf ? changeOf(fn, length) * noise() : noise();
        const pair = changeOf ? ` base=${base.toPrecision(4)} ratio=${ratio.toFixed(4)} ` +
            `lo=${(ratio * 0.999).toFixed(4)} hi=${(ratio * 1.001).toFixed(4)} nPrs=9 quiet` : '';
        text += `${fn},${length},-,-,-,-,-,-,-,nLps=64${pair},${(base * ratio).toPrecision(4)},e,0.5,-\n`;
    }));
    const path = join(folder, name);
    writeFileSync(path, text);
    return path;
}

const change = (fn, length) => fn.startsWith('Sin,32f') && length >= 256 ? 1.06
    : fn === 'Exp,64f,A53' ? 0.9 : 1;
const lengths = [32, 64, 128, 256, 512, 1024];
const few = ['Exp,64f,A53', 'Rint,32f,-', 'Sin,32f,A11', 'Sin,32f,A24', 'Sin,64f,A53', 'Sinh,64f,A53'];
const passesOf = (name, functions, some, count, how) => Array.from({length: count},
    (_, i) => table(`${name}${i}.csv`, functions, some, i + 1, how));

function report(name, inputs) {
    const path = join(folder, name + '.html');
    execFileSync(process.env.PS_TABLES, ['report', ...inputs, '-o', path]);
    return path;
}

function history(name, inputs, ...words) {
    const path = join(folder, name + '.html');
    const labels = inputs.flatMap((_, i) => ['--label', `v${i} </script>`]);
    execFileSync(process.env.PS_TABLES, ['history', ...inputs, ...labels, ...words, '-o', path]);
    return path;
}

// From the ninth of twelve dates on, Sin of here is slower; there, nothing changes.
function datesOf(name, computer, later) {
    return Array.from({length: 12}, (_, i) => {
        const path = table(`${name}${i}.csv`, few, lengths, i + 1, undefined, 'L', computer);
        writeFileSync(path, readFileSync(path, 'utf8').replace(/^(Sin,64f.*,)([\d.]+)(,e,0.5,-)$/gm,
            (line, head, clocks, tail) => head + (clocks * (i < 8 ? 1 : later)).toPrecision(4) + tail));
        return path;
    });
}

let browser;
let pages;
before(async () => {
    browser = await chromium.launch({
        executablePath: process.env.PS_BROWSER,
        args: ['--no-sandbox', '--disable-gpu', '--disable-background-networking', '--no-first-run',
               '--disable-component-update', '--disable-sync'],
    });
    pages = {
        pairs: report('pairs', passesOf('pair', few, lengths, 8, change)),
        plain: report('plain', passesOf('plain', few, lengths, 3)),
        compared: report('compared', [...passesOf('new', few, lengths, 5), '--against',
                                      table('old.csv', few, lengths, 77)]),
        history: history('history', [...datesOf('here', 'here', 1.2), ...datesOf('there', 'there', 1)]),
        chain: history('chain', passesOf('link', few, lengths, 3, change), '--baseline-chain'),
    };
});
after(async () => {
    await browser?.close();
    rmSync(folder, {recursive: true});
});

// Opens a page, hands it over, and fails on errors and on whatever would leave the file.
async function look(path, use, {hash = '', ...options} = {}) {
    const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
    const page = await context.newPage();
    const troubles = [];
    page.on('pageerror', error => troubles.push(String(error)));
    page.on('console', message => troubles.push(message.text()));
    page.on('request', request => {
        if (!/^(file|blob|data):/.test(request.url())) {
            troubles.push('request: ' + request.url());
        }
    });
    await page.goto(pathToFileURL(path) + hash);
    if (options.javaScriptEnabled !== false) {
        await page.waitForSelector('html[data-ready]');
    }
    await use(page, context);
    assert.deepEqual(troubles, []);
    await context.close();
}

const names = page => page.$$eval('#rows tbody tr',
    lines => lines.map(line => [...line.cells].slice(0, 2).map(cell => cell.textContent).join(' ')));

test('what was found stands first, and the map and the chart show it', () =>
    look(pages.pairs, async page => {
        assert.match(await page.textContent('.verdict'),
                     /^Slower at 6 of 36 points, worst Sin_32f_A\d\d at 256\.\.1024 by \+\d\.\d%; faster at 6, most Exp_64f_A53 at 32\.\.1024 by -\d+\.\d%\.$/);
        assert.match(await page.textContent('.counts'), /6 slower.*6 faster.*24 same.*0 undecided/);
        assert.equal(await page.locator('#map td.cell').count(), 36);
        assert.equal(await page.locator('#map td.called').count(), 12);
        assert.equal(await page.locator('#map td.called[class*=" s4"]').count(), 6);
        assert.equal(await page.locator('#map td.called[class*=" f5"]').count(), 6);
        const drawn = await page.$eval('#chart canvas', canvas => new Set(canvas.getContext('2d')
            .getImageData(0, 0, canvas.width, canvas.height).data).size);
        assert.ok(drawn > 10, 'the chart is empty');
    }));

test('search, filters and sorting choose rows, and the address shows the same again', async () => {
    const cases = {
        'sin 64f': 12, '>2%': 6, '<-2%': 6, 'slower': 6, 'faster 32..64': 2, '256': 6, 'a11 >2%': 3,
        'nothing': 0, '.*': 0,
    };
    let address;
    await look(pages.pairs, async page => {
        for (const [words, count] of Object.entries(cases)) {
            await page.fill('#search', words);
            assert.equal((await names(page)).length, count, words);
        }
        await page.click('#clear');
        await page.fill('#search', 'sin 64f');
        await page.selectOption('#family', 'Sin');
        await page.selectOption('#verdict', 'same');
        await page.click('#rows thead button:text("Length")');
        await page.click('#rows thead button:text("Length")');
        assert.equal(await page.getAttribute('#rows th:nth-child(2)', 'aria-sort'), 'descending');
        assert.deepEqual(await names(page), [1024, 512, 256, 128, 64, 32].map(n => 'Sin_64f_A53 ' + n));
        await page.locator('#map td.in').nth(5).waitFor();
        assert.equal(await page.locator('#map td.in').count(), 6);
        address = new URL(page.url()).hash;
        await page.click('.counts li.faster button');
        assert.equal((await names(page)).length, 0);
    });
    await look(pages.pairs, async page => {
        assert.equal(await page.inputValue('#search'), 'sin 64f');
        assert.deepEqual((await names(page))[0], 'Sin_64f_A53 1024');
    }, {hash: address});
});

test('rows are copied as csv, formulas disarmed', async () => {
    const path = report('formula', [table('formula.csv', ['=1+1,32f,A24', '"x,32f,A24'], [32], 1)]);
    await look(path, async (page, context) => {
        await context.grantPermissions(['clipboard-read', 'clipboard-write']);
        await page.click('#copy');
        await page.locator('#copied:not(:empty)').waitFor();
        const lines = (await page.evaluate(() => navigator.clipboard.readText())).split('\n');
        assert.equal(lines[0], 'function,type,accuracy,length,clocks_per_element,passes,spread');
        assert.match(lines[1], /^ =1\+1,32f,A24,32,3(\.\d+)?,1,0$/);
        assert.match(lines[2], /^"""x",32f,A24,32,/);
    });
});

test('keys alone: a cell opens its curve, values are read, Escape goes back', () =>
    look(pages.pairs, async page => {
        const focused = () => page.evaluate(() => document.activeElement.getAttribute('aria-label'));
        await page.focus('#map td.cell[tabindex="0"]');
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('End');
        await page.keyboard.press('ArrowLeft');
        assert.match(await focused(), /^Sin_64f_A53, length 512: .* same, /);
        await page.keyboard.press('Enter');
        assert.match(await page.textContent('#chips'), /^Sin_64f_A53/);
        assert.equal(await page.evaluate(() => document.activeElement.id), 'chart');
        await page.keyboard.press('ArrowRight');
        await page.keyboard.press('ArrowRight');
        assert.match(await page.textContent('#values'), /^length 64.*after \d.*before \d/);
        await page.keyboard.press('Escape');
        assert.match(await focused(), /^Sin_64f_A53, length 512/);
    }));

test('a step of a history opens its curve, by click and by keys', async () => {
    await look(pages.history, async page => {
        assert.match(await page.textContent('.verdict'),
                     /^1 step in 1 of 6 functions, worst Sin_64f_A53 at 32\.\.1024 by \+\d+\.\d% from v8 <\/script>\.$/);
        assert.match((await names(page)).join('\n'), /^Sin_64f_A53 32\.\.1024$/);
        const slow = () => page.$eval('#chart canvas', canvas => {
            const {data} = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
            return data.some((red, i) => i % 4 === 0 && red === 0xc2 && data[i + 1] === 0x41);
        });
        await page.selectOption('#machine', {index: 1});
        await page.locator('#values:not(:has-text("%"))').waitFor();
        assert.equal(await slow(), false);
        await page.focus('#rows tbody button');
        await page.keyboard.press('Enter');
        assert.match(await page.textContent('#values'), /^Sin_64f_A53\+\d+\.\d% at 32\.\.1024 from v8/);
        await page.waitForTimeout(50); // drawn with the next frame
        assert.equal(await slow(), true);
        for (let i = 0; i < 9; ++i) {
            await page.keyboard.press('ArrowRight');
        }
        assert.match(await page.textContent('#values'), /^v8 <\/script>\d.* clocksstep \+/);
        await page.keyboard.press('Escape');
        assert.equal(await page.evaluate(() => document.activeElement.textContent), 'Sin_64f_A53');
    });
    await look(pages.chain, async page => {
        await page.selectOption('#function', 'Exp_64f_A53');
        await page.focus('#chart');
        for (let i = 0; i < 3; ++i) {
            await page.keyboard.press('ArrowRight');
        }
        assert.match(await page.textContent('#values'), /^v2 <\/script>−2[67]\.\d%$/);
    });
});

test('curves are put together, shown as change and saved', () =>
    look(pages.pairs, async page => {
        await page.click('#map td.f5 >> nth=0');
        assert.match(page.url(), /open=Exp_64f_A53$/);
        await page.selectOption('#add', 'Rint_32f');
        assert.equal(await page.locator('#values .item').count(), 4);
        await page.check('input[value=change]');
        assert.equal(await page.locator('#values .item').count(), 2);
        for (const [kind, sign] of [['svg', '<svg'], ['png', '\x89PNG']]) {
            const [download] = await Promise.all([page.waitForEvent('download'), page.click('#' + kind)]);
            const bytes = readFileSync(await download.path(), 'latin1');
            assert.ok(bytes.startsWith(sign), kind);
            if (kind === 'svg') {
                assert.equal(bytes.match(/<polyline/g).length, 2);
                assert.match(bytes, />Exp_64f_A53</);
                assert.doesNotMatch(bytes, /NaN|undefined/);
            }
        }
        await page.click('#chips button >> nth=0');
        assert.match(await page.textContent('#chips'), /^Rint_32f [^ ]$/);
    }));

test('no one is kept out: axe, light and dark, wide and narrow, each kind of table', async () => {
    for (const [name, path] of Object.entries(pages)) {
        for (const colorScheme of ['light', 'dark']) {
            await look(path, async page => {
                const paper = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
                assert.equal(paper === 'rgb(255, 255, 255)', colorScheme === 'light');
                assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360);
                await page.evaluate(axe);
                const found = await page.evaluate(() => window.axe.run({
                    runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa']}));
                assert.deepEqual(found.violations.map(one => [one.id, one.nodes[0].html]), [], name);
            }, {colorScheme, viewport: {width: 360, height: 800}, bypassCSP: true});
        }
    }
});

test('names and comments are data, however hostile', async () => {
    const bad = ['</script><script>window.hit = 1</script>', '<img src=x onerror=window.hit=1>',
                 '{{script}}', `'"\`&amp;\u2028\u202e`, '__proto__', 'x'.repeat(60000)];
    const path = report('hostile', [table('hostile.csv', bad.map(name => name + ',32f,A24'), [32, 64],
                                          1, undefined, bad.join(' ').slice(0, 60000))]);
    await look(path, async page => {
        assert.equal(await page.evaluate(() => window.hit), undefined);
        assert.equal(await page.locator('img').count(), 0);
        assert.equal(await page.locator('#map td.cell').count(), 12);
        assert.ok((await names(page)).includes(bad[0] + '_32f_A24 32'));
        assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 1280);
        await page.click('#rows tbody button >> nth=-1');
    });
    await look(path, async page => assert.equal(await page.locator('img, script:not([type])').count(), 1),
               {javaScriptEnabled: false});
    // Were markup to get in, it could neither run nor reach anyone.
    const context = await browser.newContext();
    const page = await context.newPage();
    await page.goto(pathToFileURL(pages.plain).href);
    assert.equal(await page.evaluate(async () => {
        const script = document.createElement('script');
        script.textContent = 'window.hit = 1';
        document.body.append(script);
        return window.hit ?? await fetch('http://127.0.0.1:9/').then(() => 'sent', error => error.name);
    }), 'TypeError');
    const violated = await page.evaluate(() => new Promise(resolve => {
        document.addEventListener('securitypolicyviolation', event => resolve(event.violatedDirective));
        new Image().src = 'http://127.0.0.1:9/x.png';
    }));
    assert.equal(violated, 'img-src');
    await context.close();
});

test('without scripts the verdict, the counts and a table are there', () =>
    look(pages.pairs, async page => {
        assert.match(await page.textContent('.verdict'), /^Slower at 6 of 36/);
        assert.match(await page.textContent('.counts'), /6 slower/);
        const line = await page.$$eval('noscript tr', lines => lines
            .map(one => [...one.cells].map(cell => cell.textContent)).find(one => one[0] === 'Sin_32f_A24'));
        assert.equal(line.length, 7);
        assert.match(line[4], /^\+\d\.\d%!$/);
        assert.equal(await page.locator('#app').isVisible(), false);
        await page.goto(pathToFileURL(pages.history).href);
        assert.match(await page.textContent('noscript tr >> nth=1'), /^Sin_64f_A5332\.\.1024v8 <\/script>\+/);
    }, {javaScriptEnabled: false}));

test('a whole library fits', async t => {
    const all = Array.from({length: 56}, (_, i) => ['32f,A11', '32f,A21', '32f,A24', '64f,A26', '64f,A50',
        '64f,A53', '64fc,A53'].map(variant => `Family${i},${variant}`)).flat();
    const many = Array.from({length: 11}, (_, i) => 32 << i);
    const pairs = report('all', passesOf('all', all, many, 20, change));
    assert.ok(statSync(pairs).size < 3e6);
    assert.ok(statSync(report('one', [table('one.csv', all, many, 1)])).size < 1.5e6);
    await look(pairs, async page => {
        assert.equal(await page.locator('#map td.cell').count(), 4312);
        // Told, not judged: the machine may have other things to do.
        t.diagnostic(JSON.stringify(await page.evaluate(() => {
            const timed = act => {
                const start = performance.now();
                act();
                document.body.getBoundingClientRect();
                return Math.round(performance.now() - start);
            };
            const search = document.getElementById('search');
            search.value = 'family1 64f';
            return {
                chart: Math.round(performance.getEntriesByName('chart')[0].startTime),
                filter: timed(() => search.dispatchEvent(new Event('input'))),
                cell: timed(() => document.querySelectorAll('#map td.cell')[999].click()),
            };
        })) + ' ms');
    });
});
