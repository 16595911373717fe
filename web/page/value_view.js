// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// A value, byte by byte and field by field; hover and focus link the two.
import { explain, littleEndian, lua, toHex } from '../npm/index.js';
import { jsonText } from '../npm/json.js';
import { copyButton, fill, h, roving } from './dom.js';
import { shownText } from './reading.js';

/** Longer rows of bytes that are all alike are counted. */
const longestRow = 24;

const hexOf = (number) => `0x${number.toString(16)}`;
const range = (part) => (part.size === 1 ? `${part.offset}` : `${part.offset}–${part.offset + part.size - 1}`);
const nameOf = (part) => part.name ?? (part.meaning === 'empty' ? 'empty' : 'unused');

/** A number in decimal and in hexadecimal. */
function numberOf(number) {
    return [h('span.decimal', {}, String(number)), ' ', h('span.hex', {}, hexOf(number))];
}

const isNumber = (content) => typeof content === 'number' || typeof content === 'bigint';

/** What the field says, a number both ways. */
function contentOf(part) {
    if (part.fields) {
        return h(
            'dl.pieces',
            {},
            Object.entries(part.fields).map(([name, content]) => [
                h('dt', {}, name),
                h('dd', {}, isNumber(content) ? numberOf(content) : String(content)),
            ]),
        );
    }
    if (isNumber(part.number) && (part.value === undefined || part.value === String(part.number)))
        return numberOf(part.number);
    return part.value ?? '';
}

/** Whether the bytes are all alike, and many. */
const isCounted = (bytes) => bytes.length > longestRow && bytes.every((byte) => byte === bytes[0]);

function hexText(bytes) {
    const pair = (byte) => byte.toString(16).padStart(2, '0');
    if (isCounted(bytes)) return `${pair(bytes[0])} × ${bytes.length}`;
    return Array.from(bytes, pair).join(' ');
}

/** A block of the bytes of one part. */
function blockOf(part, bytes, index) {
    const unnamed = part.name === undefined;
    return h(
        unnamed ? 'button.block.unnamed' : 'button.block',
        { type: 'button', 'data-part': index },
        h('span.offset', { 'aria-hidden': 'true' }, String(part.offset)),
        h('span.octets', {}, hexText(bytes)),
        h('span.name', {}, nameOf(part)),
    );
}

function rowOf(part, bytes, index) {
    return h(
        part.name === undefined ? 'tr.unnamed' : 'tr',
        { 'data-part': index, role: 'row', tabIndex: -1 },
        h('td.range', { role: 'cell' }, range(part)),
        h('th', { role: 'rowheader', scope: 'row' }, nameOf(part)),
        h('td.content', { role: 'cell' }, contentOf(part)),
        h('td.meaning', { role: 'cell' }, part.meaning),
        h('td.octets', { role: 'cell' }, hexText(bytes)),
    );
}

/** Marks the block and the row of a part together. */
function link(element) {
    let marked;
    const mark = (index) => {
        if (index === marked) return;
        marked = index;
        for (const one of element.querySelectorAll('[data-part]'))
            one.classList.toggle('on', one.dataset.part === index);
    };
    const partOf = (event) => event.target.closest?.('[data-part]')?.dataset.part;
    const focused = () => document.activeElement?.closest('[data-part]')?.dataset.part;
    element.addEventListener('pointerover', (event) => mark(partOf(event) ?? focused()));
    element.addEventListener('pointerleave', () => mark(focused()));
    element.addEventListener('focusin', (event) => mark(partOf(event)));
    element.addEventListener('focusout', () => mark(undefined));
}

const orders = [
    { id: 'big', label: 'Big-endian', about: 'as the router keeps it' },
    { id: 'little', label: 'Little-endian', about: 'as a little-endian machine keeps it' },
];
const scripts = [
    { id: 'lua', label: 'Lua' },
    { id: 'json', label: 'JSON' },
];

/** One of a few, chosen by buttons. */
export function choice(label, options, chosen, choose) {
    const group = h('div.choice', { role: 'group', 'aria-label': label });
    const show = (id) => {
        for (const button of group.children) button.setAttribute('aria-pressed', String(button.dataset.id === id));
    };
    group.append(
        ...options.map((option) =>
            h(
                'button',
                {
                    type: 'button',
                    'data-id': option.id,
                    title: option.about,
                    onclick: () => {
                        show(option.id);
                        choose(option.id);
                    },
                },
                option.label,
            ),
        ),
    );
    show(chosen);
    return group;
}

const isList = (content) => Array.isArray(content) && content.every((entry) => typeof entry !== 'object');

/** JSON for people: an array of numbers in a line. */
function jsonLines(content, margin = '') {
    if (content === null || typeof content !== 'object' || isList(content))
        return jsonText(content).replaceAll(',', ', ');
    const inner = `${margin}  `;
    const entries = Array.isArray(content)
        ? content.map((entry) => jsonLines(entry, inner))
        : Object.entries(content).map(([key, entry]) => `${jsonText(key)}: ${jsonLines(entry, inner)}`);
    const [open, close] = Array.isArray(content) ? '[]' : '{}';
    return `${open}\n${inner}${entries.join(`,\n${inner}`)}\n${margin}${close}`;
}

function scriptView(name, value, explanation) {
    if (explanation.no_table !== undefined) return h('p.note', {}, `There is no script table: ${explanation.no_table}`);
    const texts = { lua: lua(name, value), json: jsonLines(explanation.table) };
    const code = h('pre', scrolled('Script table'));
    const tools = h('div.tools');
    const show = (id) => {
        fill(code, texts[id]);
        fill(tools, choice('Language of the script table', scripts, id, show), copyButton(texts[id]));
    };
    show('lua');
    return h('section.script', {}, h('div.head', {}, h('h3', {}, 'Script table'), tools), code);
}

/** What may be too long for its place, and is scrolled there. */
const scrolled = (name) => ({ tabIndex: 0, role: 'group', 'aria-label': name });

/** A fact with a name in front and a button to copy it. */
function fact(name, text) {
    const isLong = text.length > 100;
    return [
        h('dt', {}, name),
        h('dd', {}, h('code', isLong ? scrolled(name) : {}, text), copyButton(text, `Copy ${name.toLowerCase()}`)),
    ];
}

/** Each element says what it is: on a phone it is laid out as something else. */
function fieldsTable(explanation, bytes) {
    const heads = ['Bytes', 'Field', 'Value', 'Meaning', 'Hexadecimal'];
    const rows = explanation.parts.map((part, index) =>
        rowOf(part, bytes.subarray(part.offset, part.offset + part.size), String(index)),
    );
    const body = h('tbody', { role: 'rowgroup' }, rows);
    roving(body, 'tr', ['ArrowUp', 'ArrowDown']);
    const head = heads.map((name) => h('th', { role: 'columnheader', scope: 'col' }, name));
    return h(
        'table.fields',
        { role: 'table', 'aria-label': 'Fields' },
        h('thead', { role: 'rowgroup' }, h('tr', { role: 'row' }, head)),
        body,
    );
}

/** What bytes stand where, in the byte order that is chosen. */
function layoutView(name, value, explanation) {
    const element = h('div.layout');
    const show = (order) => {
        const bytes = order === 'little' ? littleEndian(name, value) : value;
        const blocks = explanation.parts.map((part, index) =>
            blockOf(part, bytes.subarray(part.offset, part.offset + part.size), String(index)),
        );
        const ribbon = h('div.ribbon', { role: 'group', 'aria-label': 'Bytes by field' }, blocks);
        roving(ribbon, '.block', ['ArrowLeft', 'ArrowRight']);
        fill(
            element,
            h('div.head', {}, h('h3', {}, `${value.length} bytes`), choice('Byte order', orders, order, show)),
            ribbon,
            fieldsTable(explanation, bytes),
        );
    };
    show('big');
    link(element);
    return element;
}

export function valueView(name, value) {
    const explanation = explain(name, value);
    const title = [name, explanation.about, explanation.kind].filter(Boolean);
    return h(
        'article.value',
        {},
        h(
            'h2',
            {},
            h('b', {}, title[0]),
            title.slice(1).map((words) => h('span', {}, words)),
        ),
        h(
            'dl.facts',
            {},
            explanation.text === null
                ? [h('dt', {}, 'Text'), h('dd.note', {}, `none: ${explanation.no_text}`)]
                : fact('Text', shownText(name, value)),
            fact('Hex', toHex(value)),
        ),
        layoutView(name, value, explanation),
        scriptView(name, value, explanation),
    );
}
