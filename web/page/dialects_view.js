// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// How other BGP speakers read the text.
import { dialects } from '../npm/index.js';
import { h } from './dom.js';

const madeOf = ({ hex, answer, value, change }) => [
    h('code', {}, hex ?? answer),
    [value, change].filter(Boolean).join(', '),
];

function rowOf(reading) {
    const [answer, meaning] = madeOf(reading);
    return h(
        reading.change ? 'tr.changed' : 'tr',
        {},
        h('th', { scope: 'row' }, [reading.reader, reading.version].filter(Boolean).join(' ')),
        h('td', {}, answer),
        h('td', {}, meaning),
    );
}

/** Nothing where no speaker was asked about a text like it. */
export function dialectsView(name, text) {
    const { asked, readings } = dialects(name, text);
    if (asked === '') return null;
    const near =
        asked === text
            ? null
            : h('p.note', {}, 'No speaker was asked about it; the nearest that was: ', h('code', {}, asked));
    return h(
        'details.dialects',
        { open: readings.some(({ change }) => change) },
        h('summary', {}, 'How others read it'),
        near,
        h('div.scroll', {}, h('table', {}, h('tbody', {}, readings.map(rowOf)))),
    );
}
