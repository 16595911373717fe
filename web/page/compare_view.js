// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Two values side by side: in which order they stand, and in which fields they differ.
import { compare, differences, fields, order, Refusal, toHex } from '../npm/index.js';
import { h } from './dom.js';

const places = {
    '-1': 'The first stands before the second',
    0: 'Both stand at the same place',
    1: 'The first stands behind the second',
};
const answers = { '-1': 'the first is less', 0: 'they are equal', 1: 'the first is greater' };

function routersAnswer(name, first, second) {
    try {
        return answers[compare(name, first, second)];
    } catch (error) {
        if (!(error instanceof Refusal)) throw error;
        return 'it does not order these values';
    }
}

function hexRow(name, value, other) {
    const pairs = Array.from(value, (byte, index) => {
        const text = byte.toString(16).padStart(2, '0');
        return byte === other[index] ? text : h('mark', {}, text);
    });
    return h(
        'tr',
        {},
        h('th', { scope: 'row' }, name),
        h(
            'td.octets',
            {},
            pairs.flatMap((pair) => [pair, ' ']),
        ),
    );
}

const shown = (content) => (content === undefined ? h('span.note', {}, 'none') : String(content));

/** The names of both, those of the first in front. */
const namesOf = (first, second) => [...new Set([...Object.keys(first), ...Object.keys(second)])];

function fieldsTable(name, first, second) {
    const [left, right] = [fields(name, first), fields(name, second)];
    const unlike = new Set(differences(name, first, second).map((difference) => difference.name));
    return h(
        'table.sides',
        {},
        h('caption.unseen', {}, 'Fields of both values'),
        h(
            'thead',
            {},
            h(
                'tr',
                {},
                ['Field', 'First', 'Second'].map((head) => h('th', { scope: 'col' }, head)),
            ),
        ),
        h(
            'tbody',
            {},
            namesOf(left, right).map((field) =>
                h(
                    unlike.has(field) ? 'tr.unlike' : 'tr',
                    {},
                    h('th', { scope: 'row' }, field, unlike.has(field) ? h('span.unseen', {}, ', differs') : null),
                    h('td', {}, shown(left[field])),
                    h('td', {}, shown(right[field])),
                ),
            ),
        ),
    );
}

/** How many fields differ, in words. */
function verdict(name, first, second) {
    const count = differences(name, first, second).length;
    if (toHex(first) === toHex(second)) return 'the same value';
    if (count === 0) return 'no field that has a name differs';
    return count === 1 ? 'one field differs' : `${count} fields differ`;
}

export function compareView(name, first, second) {
    return h(
        'article.value',
        {},
        h('h2', {}, h('b', {}, places[order(name, first, second)]), h('span', {}, verdict(name, first, second))),
        h('p.note', {}, `Asked to compare them, the router says that ${routersAnswer(name, first, second)}.`),
        fieldsTable(name, first, second),
        h(
            'table.bytes',
            { role: 'table' },
            h('caption', {}, 'Bytes'),
            h('tbody', {}, hexRow('First', first, second), hexRow('Second', second, first)),
        ),
    );
}
