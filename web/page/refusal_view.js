// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Why a text is refused: the place in it, the reason, and what may be clicked instead.
import { type } from '../npm/index.js';
import { h } from './dom.js';

const changes = {
    spelling: 'the same, written as the type takes it',
    example: 'what is missing comes from an example',
    value: 'another value',
};

/** The text with its wrong part marked, and a caret below. */
function placeOf({ text, at, length }) {
    const [before, wrong, behind] = [text.slice(0, at), text.slice(at, at + length), text.slice(at + length)];
    const caret = ' '.repeat([...before].length) + '^' + '~'.repeat(Math.max([...wrong].length - 1, 0));
    return h(
        'pre.place',
        { tabIndex: 0, role: 'group', 'aria-label': 'The place in the text' },
        before,
        wrong === '' ? null : h('mark', {}, wrong),
        behind,
        '\n',
        h('span.caret', { 'aria-hidden': 'true' }, caret),
    );
}

function repairOf(refusal, repair) {
    if (refusal.repair === undefined) return null;
    return h(
        'div.repair',
        {},
        h(
            'button.offer',
            { type: 'button', onclick: () => repair(refusal.repair) },
            h('span', {}, 'Use '),
            h('code', {}, refusal.repair),
        ),
        h('span.note', {}, changes[refusal.change]),
    );
}

function typesOf(refusal, choose) {
    if (refusal.otherTypes.length === 0) return null;
    return h(
        'div.others',
        {},
        h('span.note', {}, 'It is a text of'),
        refusal.otherTypes.map((name) => typeButton(name, choose)),
    );
}

/** A type that can be chosen, by what it is in words. */
export function typeButton(name, choose, pressed) {
    const attributes = { type: 'button', title: name, onclick: () => choose(name) };
    if (pressed !== undefined) attributes['aria-pressed'] = String(pressed);
    return h('button.chip', attributes, type(name).about);
}

function formsOf(refusal, repair) {
    const forms = refusal.forms.filter((form) => form.example !== '');
    if (forms.length === 0) return null;
    return h(
        'details.forms',
        {},
        h('summary', {}, `What ${refusal.forms.length === 1 ? 'it takes' : 'its kinds take'}`),
        h(
            'ul',
            {},
            forms.map((form) =>
                h(
                    'li',
                    {},
                    h('span.note', {}, form.kind || form.form),
                    h(
                        'button.plain',
                        { type: 'button', onclick: () => repair(form.example) },
                        h('code', {}, form.example),
                    ),
                ),
            ),
        ),
    );
}

/** The sentence without what the text itself shows. */
function sentenceOf(refusal) {
    const sentence = refusal.reason || refusal.message;
    return sentence.charAt(0).toUpperCase() + sentence.slice(1);
}

/**
 * @param {import('../npm/index.js').Refusal} refusal
 * @param {(text: string) => void} repair  takes the text in place of the refused one
 * @param {(name: string) => void} choose  takes the type in place of the one that refuses
 */
export function refusalView(refusal, repair, choose) {
    const placed = refusal.reason !== '' && refusal.text !== undefined && refusal.text !== '';
    return h(
        'div.refusal',
        {},
        placed ? placeOf(refusal) : null,
        h('p.reason', {}, sentenceOf(refusal), refusal.status ? h('span.status', {}, refusal.status) : null),
        repairOf(refusal, repair),
        typesOf(refusal, choose),
        formsOf(refusal, repair),
    );
}
