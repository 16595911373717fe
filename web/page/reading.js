// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// What is written as a value: text; bytes in hexadecimal behind 0x; a script table as JSON.
import { fields, fromHex, fromTable, parse, printBytes, Refusal, tryParse, type } from '../npm/index.js';
import { parseJson } from '../npm/json.js';

const isBytes = (text) => /^\s*0x/i.test(text);
const isTable = (text) => /^\s*\{/.test(text);

/** The value; throws a Refusal. */
export function readValue(name, text) {
    const value = tryParse(name, text);
    if (value !== undefined) return value;
    if (isBytes(text)) return fromHex(name, text.trim());
    if (isTable(text)) return fromTable(name, parsedTable(text));
    return parse(name, text); // throws the reason
}

function parsedTable(text) {
    try {
        return parseJson(text);
    } catch {
        return text; // which the library refuses in its own words
    }
}

/** What became of a text: a value, or the refusal. */
export function reading(name, text) {
    try {
        return { name, text, value: readValue(name, text) };
    } catch (error) {
        if (!(error instanceof Refusal)) throw error;
        return { name, text, refusal: error };
    }
}

/** What the value prints as; bytes that are no text as "\\x1b". */
export function shownText(name, value) {
    const bytes = printBytes(name, value);
    const escaped = (character) => `\\x${character.charCodeAt(0).toString(16).padStart(2, '0')}`;
    try {
        return new TextDecoder('utf-8', { fatal: true }).decode(bytes).replace(/[\0-\x1f\x7f]/g, escaped);
    } catch {
        return String.fromCharCode(...bytes).replace(/[^ -~]/g, escaped);
    }
}

// ------------------------------------------------------------------------------------------------ samples

/** Fields that tell the form of a text, or the kind of its value. */
const telling = ['sub-kind', 'route type', 'protocol', 'text form', 'notation', 'wildcard'];

/** What a field of a sample says, a kind in words. */
function wordOf(kinds, field, content) {
    const kind = field === 'sub-kind' ? kinds.find((one) => one.name === content) : undefined;
    return kind ? kind.about.split(':')[0] : content;
}

/** Words for a sample among the others of its type: what not all of them have in common. */
function labelsOf({ name, samples, kinds }) {
    const all = samples.map((text) => fields(name, readValue(name, text)));
    const told = telling.filter((field) => new Set(all.map((one) => one[field])).size > 1);
    const words = (one) => told.filter((field) => field in one).map((field) => wordOf(kinds, field, one[field]));
    return all.map((one) => words(one).join(', '));
}

const known = new Map();

/** The samples of a type, each with what it is among them. A type without texts has one of zeros. */
export function samplesOf(name) {
    if (!known.has(name)) {
        const { samples, size, about } = type(name);
        const labels = labelsOf(type(name));
        const rows = samples.map((text, index) => ({ text, label: labels[index] || about }));
        known.set(name, rows.length > 0 ? rows : [{ text: `0x${'00'.repeat(size)}`, label: 'zeros' }]);
    }
    return known.get(name);
}
