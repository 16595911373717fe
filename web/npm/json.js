// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// JSON whose integers have up to 64 bits: those that a number cannot hold are bigints.

/** Begins a string that stands for a bigint. */
const mark = '\0';
const token = /"(?:[^"\\]|\\.)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;

const isTooLarge = (text) => /^-?\d+$/.test(text) && !Number.isSafeInteger(Number(text));
const isMarked = (value) => typeof value === 'string' && value.startsWith(mark);

/** @param {string} text */
export function parseJson(text) {
    if (!/\d{16}/.test(text)) return JSON.parse(text);
    const marked = text.replace(token, (found) => (isTooLarge(found) ? `"\\u0000${found}"` : found));
    return JSON.parse(marked, (_key, value) => (isMarked(value) ? BigInt(value.slice(mark.length)) : value));
}

/** @param {unknown} value */
export function jsonText(value) {
    const marked = JSON.stringify(value, (_key, part) => (typeof part === 'bigint' ? mark + part : part));
    return marked.replace(/"\\u0000(-?\d+)"/g, '$1');
}
