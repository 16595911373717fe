// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Texts to click: a text of each form of a type, or one of each type where none is chosen.
import { types } from '../npm/index.js';
import { h } from './dom.js';
import { samplesOf } from './reading.js';
import { anyType } from './type_box.js';

/** More of them are behind a click. */
const fewSamples = 4;

/** Of types that people have at hand. */
const firstOf = ['COMMUNITY', 'LARGECOMMUNITY', 'VRFRD', 'VRFRT', 'EVNPREFIX', 'TIME_RANGE'];

function rowsOf(name) {
    if (name !== anyType) return samplesOf(name).map((sample) => ({ ...sample, type: name }));
    return firstOf.map((type) => ({
        text: types().find((one) => one.name === type).samples[0],
        label: types().find((one) => one.name === type).about,
        type,
    }));
}

/** @param {(text: string) => void} take */
export function samplesView(name, take) {
    const button = ({ text, label }) =>
        h(
            'li',
            {},
            h(
                'button.sample',
                { type: 'button', title: text, onclick: () => take(text) },
                h('span', {}, label),
                h('code', {}, text),
            ),
        );
    const rows = rowsOf(name);
    const more = rows.slice(fewSamples);
    return h(
        'div.samples',
        { role: 'group', 'aria-label': 'Samples' },
        h('ul', {}, rows.slice(0, fewSamples).map(button)),
        more.length > 0
            ? h('details', {}, h('summary', {}, `${more.length} more samples`), h('ul', {}, more.map(button)))
            : null,
    );
}
