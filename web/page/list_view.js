// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Many values, a line each, as a table: what they are, and why some are none.
import { fields, guess, Refusal, toHex, tryParse, why } from '../npm/index.js';
import { breathe, download, fill, h, tell } from './dom.js';
import { shownText } from './reading.js';
import { anyType } from './type_box.js';

const rowsPerPage = 100;
/** So long the page may work without a pause, in ms. */
const slice = 12;
/** So many lines tell which type a list is of. */
const asked = 50;

const linesOf = (text) => text.replace(/\r?\n$/, '').split(/\r?\n/);

/** The likeliest type of the first lines: each speaks for the types that take it, the likeliest the loudest. */
export function typeOfList(lines) {
    const votes = new Map();
    for (const line of lines.slice(0, asked))
        guess(line).forEach((name, place) => votes.set(name, (votes.get(name) ?? 0) + 1 / (1 + place)));
    return [...votes].sort(([, first], [, second]) => second - first)[0]?.[0];
}

function textOf(name, value) {
    try {
        return shownText(name, value);
    } catch (error) {
        if (!(error instanceof Refusal)) throw error;
        return '';
    }
}

/** What becomes of a line. */
const rowOf = (name, text, index) => ({ line: index + 1, text, value: tryParse(name, text) });

/** Adds what takes longer to find: the fields of a value, or why there is none. */
function complete(name, row) {
    if (row.fields ?? row.reason) return;
    if (row.value === undefined) {
        const refusal = why(name, row.text);
        row.reason = refusal.reason || refusal.message;
    } else {
        row.printed = textOf(name, row.value);
        row.fields = fields(name, row.value);
    }
}

/** The names of all fields that rows have, in the order in which they come. */
const namesOf = (rows) => [...new Set(rows.flatMap((row) => Object.keys(row.fields ?? {})))];

/** Goes through a list with pauses, until it is stopped. */
async function walk(count, work, isStopped, report) {
    let began = performance.now();
    for (let index = 0; index < count; ++index) {
        work(index);
        if (performance.now() - began < slice) continue;
        report(index + 1);
        await breathe();
        if (isStopped()) return false;
        began = performance.now();
    }
    return true;
}

const quoted = (cell) => (/[",\r\n]/.test(cell) ? `"${cell.replaceAll('"', '""')}"` : cell);

const hexOf = (row) => (row.value ? toHex(row.value) : '');

/** Complete rows as CSV (RFC 4180). */
export function csvOf(rows) {
    const names = namesOf(rows);
    const head = ['line', 'given', 'text', ...names, 'hex', 'refused'];
    const cells = (row) => [
        row.line,
        row.text,
        row.printed ?? '',
        ...names.map((name) => row.fields?.[name] ?? ''),
        hexOf(row),
        row.reason ?? '',
    ];
    return [head, ...rows.map(cells)].map((row) => row.map((cell) => quoted(String(cell))).join(',') + '\r\n').join('');
}

export class ListView {
    constructor() {
        this.run = 0;
        this.progress = h('progress', { max: 1, value: 0, hidden: true, 'aria-label': 'Lines read' });
        this.body = h('div.rows');
        this.element = h('div.list-result', {}, this.progress, this.body);
    }

    /** Does the work for each row with pauses; answers whether that was to the end. */
    async walk(count, work) {
        const run = this.run;
        this.progress.hidden = false;
        const report = (done) => (this.progress.value = done / count);
        const done = await walk(count, work, () => run !== this.run, report);
        if (done) this.progress.hidden = true;
        return done;
    }

    /** Reads the lines as values of the type; what was read before is forgotten. */
    async show(type, text) {
        ++this.run;
        delete this.element.dataset.done;
        const lines = text === '' ? [] : linesOf(text);
        this.name = type === anyType ? typeOfList(lines) : type;
        this.rows = [];
        this.page = 0;
        this.onlyRefused = false;
        if (lines.length === 0 || this.name === undefined) return this.showNothing(lines);
        if (!(await this.walk(lines.length, (index) => this.rows.push(rowOf(this.name, lines[index], index))))) return;
        this.refused = this.rows.filter((row) => row.value === undefined);
        this.draw();
        this.element.dataset.done = lines.length;
        tell(this.verdict());
    }

    showNothing(lines) {
        this.progress.hidden = true;
        fill(
            this.body,
            lines.length === 0
                ? null
                : h('p.note', {}, 'No type takes the first of these lines. Choose one to see why.'),
        );
    }

    verdict() {
        return `${this.rows.length - this.refused.length} of ${this.rows.length} lines are values`;
    }

    draw() {
        const rows = this.onlyRefused ? this.refused : this.rows;
        const from = this.page * rowsPerPage;
        const shown = rows.slice(from, from + rowsPerPage);
        for (const row of shown) complete(this.name, row);
        fill(
            this.body,
            h('div.head', {}, h('h2', {}, h('b', {}, this.name), h('span', {}, this.verdict())), this.tools()),
            tableOf(shown),
            rows.length > rowsPerPage ? this.pager(rows.length) : null,
        );
    }

    tools() {
        const only = {
            type: 'button',
            'aria-pressed': String(this.onlyRefused),
            onclick: () => {
                this.onlyRefused = !this.onlyRefused;
                this.page = 0;
                this.draw();
                this.body.querySelector('[aria-pressed]').focus();
            },
        };
        return h(
            'div.tools',
            {},
            this.refused.length > 0 ? h('button.small', only, `Refused only: ${this.refused.length}`) : null,
            h('button.small', { type: 'button', onclick: () => this.save() }, 'Download CSV'),
        );
    }

    async save() {
        if (!(await this.walk(this.rows.length, (index) => complete(this.name, this.rows[index])))) return;
        download(`${this.name}.csv`, 'text/csv;charset=utf-8', csvOf(this.rows));
        tell('Downloaded');
    }

    pager(count) {
        const last = Math.ceil(count / rowsPerPage) - 1;
        const from = this.page * rowsPerPage;
        const turn = (label, to) =>
            h(
                'button.small',
                {
                    type: 'button',
                    disabled: to < 0 || to > last,
                    onclick: () => {
                        this.page = to;
                        this.draw();
                        this.body.querySelector('.scroll').focus();
                    },
                },
                label,
            );
        return h(
            'nav.pager',
            { 'aria-label': 'Pages' },
            turn('Before', this.page - 1),
            h('span', {}, `${from + 1} to ${Math.min(from + rowsPerPage, count)} of ${count}`),
            turn('Next', this.page + 1),
        );
    }
}

/** A table of complete rows. */
function tableOf(rows) {
    const names = namesOf(rows);
    const heads = ['Line', 'Given', 'Text', ...names, 'Hexadecimal'];
    return h(
        'div.scroll',
        { tabIndex: 0, role: 'region', 'aria-label': 'Lines' },
        h(
            'table.many',
            {},
            h(
                'thead',
                {},
                h(
                    'tr',
                    {},
                    heads.map((head) => h('th', { scope: 'col' }, head)),
                ),
            ),
            h(
                'tbody',
                {},
                rows.map((row) => lineOf(row, names)),
            ),
        ),
    );
}

function lineOf(row, names) {
    const line = [h('th', { scope: 'row' }, String(row.line)), h('td.given', {}, row.text)];
    if (row.value === undefined)
        return h('tr.refused', {}, line, h('td.reason', { colSpan: names.length + 2 }, row.reason));
    return h(
        'tr',
        {},
        line,
        h(row.printed === row.text ? 'td.same' : 'td', {}, row.printed),
        names.map((name) => h('td', {}, String(row.fields[name] ?? ''))),
        h('td.octets', {}, toHex(row.value)),
    );
}
