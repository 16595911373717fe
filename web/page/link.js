// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// What the page shows, as the fragment of its address: no server ever sees it.

/** What the page shows when nothing is said. */
const usual = { view: 'value', type: '', as: '', text: '', second: '', list: '' };

/** Longer addresses are not understood everywhere. */
const longest = 30000;

export const views = ['value', 'compare', 'list'];

export function stateOf(fragment) {
    const given = new URLSearchParams(fragment.replace(/^#/, ''));
    const state = Object.fromEntries(Object.entries(usual).map(([key, value]) => [key, given.get(key) ?? value]));
    return views.includes(state.view) ? state : { ...state, view: usual.view };
}

/** The parts of the state that the view shows. */
const shownBy = { value: ['text', 'as'], compare: ['text', 'second'], list: ['list'] };

export function fragmentOf(state) {
    const told = new URLSearchParams();
    for (const key of ['view', 'type', ...shownBy[state.view]])
        if (state[key] !== usual[key]) told.set(key, state[key]);
    const fragment = told.toString();
    return fragment.length > longest ? undefined : fragment;
}
