// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The page: one type, three views, and an address that says what is shown.
import { guess, types, why } from '../npm/index.js';
import { compareView } from './compare_view.js';
import { dialectsView } from './dialects_view.js';
import { breathe, byId, copy, fill, h, newId, roving, tell } from './dom.js';
import { fragmentOf, stateOf, views } from './link.js';
import { ListView } from './list_view.js';
import { reading } from './reading.js';
import { refusalView, typeButton } from './refusal_view.js';
import { samplesView } from './samples_view.js';
import { anyType, TypeBox } from './type_box.js';
import { valueView } from './value_view.js';

/** What is shown to whoever comes without a link. */
const example = '#text=64496:100';

let state = stateOf(location.hash || example);
/** Raised with every change: what is found for an older state is not shown. */
let version = 0;

// ------------------------------------------------------------------------------------------------ what is written

/** A line in which a value is written. Several lines are a list. */
function textField(key, label) {
    const id = newId('text');
    const area = h('textarea.text', {
        id,
        rows: 1,
        spellcheck: 'false',
        autocapitalize: 'off',
        autocomplete: 'off',
        placeholder: 'text, 0x and bytes, or a script table in JSON',
        oninput: () => change({ [key]: area.value.replace(/[\r\n]+$/, '') }),
        onkeydown: (event) => {
            if (event.key === 'Enter') event.preventDefault();
        },
        onpaste: (event) => {
            const pasted = event.clipboardData.getData('text').trim();
            if (!/[\r\n]/.test(pasted) || pasted.startsWith('{')) return;
            event.preventDefault();
            go({ view: 'list', list: pasted });
        },
    });
    return { element: h('div.field', {}, h('label', { for: id }, label), area), area };
}

const fields = {
    text: textField('text', 'Value'),
    first: textField('text', 'First value'),
    second: textField('second', 'Second value'),
};
const listArea = h('textarea.lines', {
    id: 'lines',
    rows: 8,
    spellcheck: 'false',
    placeholder: 'a value a line',
    oninput: () => change({ list: listArea.value }),
});
const typeBox = new TypeBox((name) => choose(name));
const lists = new ListView();
const places = Object.fromEntries(
    ['samples', 'taken', 'result', 'sides', 'compared'].map((name) => [name, h(`div.${name}`)]),
);

// ------------------------------------------------------------------------------------------------ the views

const take = (key) => (text) => go({ [key]: text });
const choose = (name) => go({ type: name, as: '' });

/** The type in whose terms a text is read: the chosen one, or the likeliest. */
function typeFor(...texts) {
    if (state.type !== anyType) return state.type;
    const taken = texts.filter(Boolean).map((text) => guess(text));
    const common = (taken[0] ?? []).filter((name) => taken.every((names) => names.includes(name)));
    return common.includes(state.as) ? state.as : common[0];
}

function showTaken(name) {
    const names = state.type === anyType && state.text !== '' ? guess(state.text) : [];
    const as = (one) => {
        change({ as: one });
        places.taken.querySelector('[aria-pressed="true"]')?.focus();
    };
    fill(
        places.taken,
        names.length > 0 ? h('span.note', {}, 'Taken by') : null,
        names.map((one) => typeButton(one, as, one === name)),
    );
}

function showValue() {
    fill(places.samples, samplesView(state.type, take('text')));
    const name = typeFor(state.text);
    showTaken(name);
    if (state.text === '') return fill(places.result);
    if (name === undefined) return showNearest(state.text);
    const { value, refusal } = reading(name, state.text);
    fill(
        places.result,
        value ? valueView(name, value) : refusalView(refusal, take('text'), choose),
        dialectsView(name, state.text),
    );
    tell(value ? `A value of ${name}` : `Refused: ${refusal.reason || refusal.message}`);
}

/** How far a repair is from what was written: another spelling is nearer than another value. */
const distance = { spelling: 0, value: 1, example: 2 };
const byDistance = (first, second) => distance[first.change] - distance[second.change];

/** No type takes the text: what the types would take instead, the nearest first. */
async function showNearest(text) {
    const now = version;
    const near = new Map();
    fill(places.result, h('p.note', {}, 'No type takes this text …'));
    for (const { name, operations } of types()) {
        await breathe();
        if (now !== version) return;
        const refusal = operations.includes('parse') ? why(name, text) : undefined;
        if (refusal?.repair !== undefined && !near.has(refusal.repair)) near.set(refusal.repair, refusal);
    }
    fill(places.result, nearestView([...near.values()].sort(byDistance).slice(0, 3), text));
    tell('No type takes this text');
}

/** @param near  refusals with unlike repairs, each told in the words of the likeliest type that takes its repair */
function nearestView(near, text) {
    const told = near
        .map(({ repair }) => guess(repair)[0])
        .filter((name, at, names) => name && names.indexOf(name) === at);
    return [
        h(
            'p.note.nearest',
            {},
            told.length > 0
                ? 'No type takes this text. Near to it are texts of'
                : 'No type takes this text, nor one near to it.',
        ),
        told.map((name) =>
            h(
                'section.near',
                {},
                h('h3', {}, typeButton(name, choose)),
                refusalView(why(name, text), take('text'), choose),
            ),
        ),
    ];
}

function showCompare() {
    const name = typeFor(state.text, state.second);
    const texts = ['text', 'second'];
    if (texts.some((key) => state[key] === ''))
        return fill(places.compared, h('p.note', {}, 'Write two values of one type.'));
    if (name === undefined) return fill(places.compared, h('p.note', {}, 'No type takes both. Choose one to see why.'));
    const read = texts.map((key) => reading(name, state[key]));
    const refused = read.findIndex((one) => one.refusal);
    fill(
        places.compared,
        refused < 0
            ? [
                  state.type === anyType ? h('p.note', {}, `Read as ${name}`) : null,
                  compareView(name, read[0].value, read[1].value),
              ]
            : refusalView(read[refused].refusal, take(texts[refused]), choose),
    );
    tell(refused < 0 ? 'Compared' : 'Refused');
}

const shows = { value: showValue, compare: showCompare, list: () => lists.show(state.type, state.list) };

// ------------------------------------------------------------------------------------------------ state

let written;

/** Takes what was written; the address follows a moment later. */
function change(changes) {
    state = { ...state, ...changes };
    ++version;
    shows[state.view]();
    clearTimeout(written);
    written = setTimeout(write, 250);
}

/** Takes what was clicked, which what is written follows. */
function go(changes) {
    state = { ...state, ...changes };
    show();
    write();
}

function write() {
    const fragment = fragmentOf(state);
    history.replaceState(null, '', fragment ? `#${fragment}` : location.pathname + location.search);
    document.title = state.view === 'value' && state.text !== '' ? `${state.text} - BGP data types` : 'BGP data types';
}

/** Shows the whole state. */
function show() {
    ++version;
    typeBox.show(state.type);
    fields.text.area.value = fields.first.area.value = state.text;
    fields.second.area.value = state.second;
    if (listArea.value !== state.list) listArea.value = state.list;
    for (const view of views) {
        const tab = byId(`tab-${view}`);
        tab.setAttribute('aria-selected', String(view === state.view));
        tab.tabIndex = view === state.view ? 0 : -1;
        byId(view).hidden = view !== state.view;
    }
    shows[state.view]();
}

// ------------------------------------------------------------------------------------------------ light and dark

const isDark = () => document.documentElement.dataset.theme === 'dark';

function setTheme(theme) {
    document.documentElement.dataset.theme = theme;
    byId('theme').textContent = isDark() ? 'Light' : 'Dark';
}

function keptTheme() {
    try {
        return localStorage.getItem('theme');
    } catch {
        return null; // nothing is kept here
    }
}

function turnTheme() {
    setTheme(isDark() ? 'light' : 'dark');
    try {
        localStorage.setItem('theme', document.documentElement.dataset.theme);
    } catch {
        // it lasts as long as the page
    }
}

// ------------------------------------------------------------------------------------------------ the page

function build() {
    byId('type-row').append(typeBox.element);
    byId('value').append(fields.text.element, places.samples, places.taken, places.result);
    byId('compare').append(h('div.sides', {}, fields.first.element, fields.second.element), places.compared);
    byId('list').append(h('div.field', {}, h('label', { for: 'lines' }, 'Values'), listArea), lists.element);
    const tabs = document.querySelector('.views');
    roving(tabs, '[role=tab]', ['ArrowLeft', 'ArrowRight']);
    for (const view of views) {
        byId(`tab-${view}`).addEventListener('click', () => state.view !== view && go({ view }));
    }
    tabs.addEventListener('focusin', (event) => event.target.click());
    byId('link').addEventListener('click', () => {
        write();
        const whole = fragmentOf(state) !== undefined;
        if (whole) copy(byId('link'), location.href);
        else byId('link').textContent = 'Too long for a link';
    });
    byId('theme').addEventListener('click', turnTheme);
    addEventListener('hashchange', () => {
        state = stateOf(location.hash || example);
        show();
    });
}

const prefersDark = matchMedia('(prefers-color-scheme: dark)');
setTheme(keptTheme() ?? (prefersDark.matches ? 'dark' : 'light'));
prefersDark.addEventListener('change', () => keptTheme() ?? setTheme(prefersDark.matches ? 'dark' : 'light'));
build();
show();
performance.mark('ready');
document.documentElement.dataset.ready = '';
