// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The box in which a type is chosen: by its name, by what it is, by what people call it; or all types are asked.
import { type as typeNamed, types } from '../npm/index.js';
import { fill, h } from './dom.js';

/** Stands for every type. */
export const anyType = '';

const rows = [
    {
        name: anyType,
        label: 'Guess',
        about: 'every type that takes the text, the likeliest first',
        grammar: '',
        kinds: '',
    },
    ...types().map(({ name, about, grammar, kinds }) => ({
        name,
        label: name,
        about,
        grammar,
        kinds: kinds.map((kind) => kind.about).join(' '),
    })),
];

/** The type that people call so. */
function nameOfAlias(word) {
    try {
        return typeNamed(word).name;
    } catch {
        return undefined; // for nothing is it usual
    }
}

/** How well a row fits what was written: by its name better than by what it is. 0: not at all. */
function rank(row, words, alias) {
    const name = row.label.toLowerCase();
    if (row.name !== anyType && (name === words.join('') || row.name === alias)) return 4;
    if (name.startsWith(words.join(''))) return 3;
    const inNames = `${name} ${row.about} ${row.kinds}`.toLowerCase();
    if (words.every((word) => inNames.includes(word))) return 2;
    return words.every((word) => `${inNames} ${row.grammar}`.toLowerCase().includes(word)) ? 1 : 0;
}

function rowsFor(query) {
    const words = query
        .toLowerCase()
        .split(/[\s,]+/)
        .filter(Boolean);
    if (words.length === 0) return rows;
    const alias = nameOfAlias(query.trim());
    return rows
        .map((row) => ({ row, rank: rank(row, words, alias) }))
        .filter((ranked) => ranked.rank > 0)
        .sort((first, second) => second.rank - first.rank)
        .map((ranked) => ranked.row);
}

export class TypeBox {
    /** @param {(name: string) => void} choose */
    constructor(choose) {
        this.choose = choose;
        this.chosen = rows[0];
        this.shown = [];
        this.at = -1;
        this.input = h('input.type', {
            id: 'type',
            role: 'combobox',
            'aria-autocomplete': 'list',
            'aria-expanded': 'false',
            'aria-controls': 'types',
            autocomplete: 'off',
            autocapitalize: 'off',
            spellcheck: 'false',
            oninput: () => this.open(this.input.value),
            onclick: () => this.open(''),
            onfocus: () => this.input.select(),
            onblur: () => this.close(),
            onkeydown: (event) => this.key(event),
        });
        this.list = h('ul.options', { id: 'types', role: 'listbox', 'aria-label': 'Types', hidden: true });
        this.about = h('p.about', { id: 'about-type' });
        this.input.setAttribute('aria-describedby', this.about.id);
        this.element = h(
            'div.type-box',
            {},
            h('label', { for: 'type' }, 'Type'),
            h('div.type-field', {}, this.input, this.list),
            this.about,
        );
        this.show(anyType);
    }

    /** Shows the type as chosen. */
    show(name) {
        this.chosen = rows.find((row) => row.name === name) ?? rows[0];
        this.input.value = this.chosen.label;
        fill(this.about, this.chosen.about, this.chosen.grammar ? h('span.grammar', {}, this.chosen.grammar) : null);
    }

    open(query) {
        this.shown = rowsFor(query);
        this.at = query === '' ? this.shown.indexOf(this.chosen) : this.shown.length > 0 ? 0 : -1;
        fill(
            this.list,
            this.shown.map((row, index) =>
                h(
                    'li',
                    {
                        id: `type-${index}`,
                        role: 'option',
                        'aria-selected': String(row === this.chosen),
                        onpointerdown: (event) => {
                            event.preventDefault(); // the focus stays
                            this.take(row);
                        },
                    },
                    h('b', {}, row.label),
                    h('span', {}, row.about),
                ),
            ),
            this.shown.length === 0
                ? h(
                      'li.none',
                      { role: 'option', 'aria-disabled': 'true', 'aria-selected': 'false' },
                      'No type is called so',
                  )
                : null,
        );
        this.list.hidden = false;
        this.input.setAttribute('aria-expanded', 'true');
        this.mark();
    }

    close() {
        this.list.hidden = true;
        this.input.setAttribute('aria-expanded', 'false');
        this.input.removeAttribute('aria-activedescendant');
        this.input.value = this.chosen.label;
    }

    mark() {
        [...this.list.children].forEach((item, index) => item.classList.toggle('at', index === this.at));
        const item = this.shown[this.at] && this.list.children[this.at];
        if (!item) return this.input.removeAttribute('aria-activedescendant');
        this.input.setAttribute('aria-activedescendant', item.id);
        item.scrollIntoView({ block: 'nearest' });
    }

    take(row) {
        this.show(row.name);
        this.close();
        this.choose(row.name);
    }

    key(event) {
        const isOpen = !this.list.hidden;
        const move = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (move !== undefined) {
            event.preventDefault();
            if (!isOpen) return this.open('');
            this.at = (this.at + move + this.shown.length) % this.shown.length;
            this.mark();
        } else if (event.key === 'Enter' && isOpen && this.shown[this.at]) {
            event.preventDefault();
            this.take(this.shown[this.at]);
        } else if (event.key === 'Escape' && isOpen) {
            event.preventDefault();
            this.close();
        }
    }
}
