// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The package's functions; index.d.ts tells what each does.
import { Engine, decode, encode } from './engine.js';
import { jsonText } from './json.js';
import { wasm } from './wasm.js';

const engine = await Engine.open(wasm);

// ------------------------------------------------------------------------------------------------ refusals

/** By code, from -1 on, and by change, from 0 on. */
const codes = [
    'REFUSED',
    'NO_TEXT',
    'NO_OPERATION',
    'NO_TYPE',
    'NO_PLUGIN',
    'NO_ROOM',
    'NO_MEMORY',
    'NO_SENSE',
    'FAILED',
];
const changes = ['spelling', 'example', 'value'];

export class Refusal extends Error {
    /**
     * @param {any} told  what the library tells
     * @param {string} [text]  the refused one
     */
    constructor(told, text) {
        super(told.message);
        this.name = 'Refusal';
        this.code = codes[-told.code - 1];
        this.status = told.status;
        this.reason = told.reason;
        this.text = text;
        const place = placeIn(text ?? '', told);
        this.at = place.at;
        this.length = place.length;
        this.repair = told.repair || undefined;
        this.change = told.repair ? changes[told.change] : undefined;
        this.otherTypes = told.otherTypes;
        this.forms = told.forms;
    }
}

/** The library counts bytes, JavaScript the halves of UTF-16. */
function placeIn(text, { at, length }) {
    const bytes = encode(text);
    const units = (from, to) => decode(bytes.subarray(from, to)).length;
    return { at: units(0, at), length: units(at, at + length) };
}

/** @throws {Refusal} for a negative code */
function required(code, text) {
    if (code < 0) throw new Refusal(engine.json(), text);
    return code;
}

// ------------------------------------------------------------------------------------------------ types

engine.call('types', []);
const all = engine.json().map((type) =>
    Object.freeze({
        name: type.type,
        about: type.about,
        id: type.id,
        size: type.size,
        storage: type.storage,
        mode: type.mode,
        grammar: type.grammar,
        samples: type.examples,
        help: type.takes,
        operations: type.operations,
        kinds: (type.kinds ?? []).map((kind) => ({
            number: kind.kind_number,
            name: kind.kind,
            about: kind.about,
            form: kind.form ?? '',
            operations: kind.operations,
        })),
    }),
);
const numbers = new Map(all.map((type, number) => [type.name, number]));

export const types = () => all;

function numberOf(name) {
    return numbers.get(name) ?? required(engine.call('find', [encode(String(name))]));
}

export const type = (name) => all[numberOf(name)];

/** The library's own address of a type. */
const typeOf = (name, { mode = -1 } = {}) => engine.functions.type(numberOf(name), mode);

export function guess(text) {
    required(engine.call('guess', [encode(text)]));
    return engine.json();
}

// ------------------------------------------------------------------------------------------------ text and values

export function parse(name, text, options) {
    const of = typeOf(name, options);
    required(engine.call('parse', [encode(text)], of), text);
    return engine.bytes();
}

export function tryParse(name, text, options) {
    const of = typeOf(name, options);
    return engine.call('try_parse', [encode(text)], of) < 0 ? undefined : engine.bytes();
}

export function why(name, text, options) {
    const of = typeOf(name, options);
    return engine.call('why', [encode(text)], of) < 0 ? new Refusal(engine.json(), text) : undefined;
}

/** Calls a function about values, and requires that it is done. */
function ask(call, name, values, options) {
    const of = typeOf(name, options);
    return required(engine.call(call, values, of));
}

export function printBytes(name, value, options) {
    ask('print', name, [value], options);
    return engine.bytes();
}

export const print = (name, value, options) => decode(printBytes(name, value, options));

export function check(name, value) {
    ask('check', name, [value]);
}

export function swap(name, value) {
    ask('swap', name, [value]);
    return engine.bytes();
}

export function littleEndian(name, value) {
    ask('to_native', name, [value]);
    return engine.bytes();
}

export function fromHex(name, hex) {
    ask('from_hex', name, [encode(hex)]);
    return engine.bytes();
}

export const toHex = (value) => Array.from(value, (byte) => byte.toString(16).padStart(2, '0')).join('');

/** An order is answered as 1, 2 or 3. */
export const compare = (name, first, second) => ask('compare', name, [first, second]) - 2;
export const order = (name, first, second) => ask('order', name, [first, second]) - 2;

export const dialects = (name, text) => jsonOf('dialects', name, [encode(text)]);

// ------------------------------------------------------------------------------------------------ fields and tables

function jsonOf(call, name, values) {
    ask(call, name, values);
    return engine.json();
}

export const explain = (name, value) => jsonOf('explain', name, [value]);
export const fields = (name, value) => jsonOf('fields', name, [value]);
export const differences = (name, first, second) => jsonOf('differences', name, [first, second]).differences;
export const table = (name, value) => jsonOf('table', name, [value]);

export function lua(name, value) {
    ask('lua', name, [value]);
    return engine.text();
}

export function fromTable(name, content) {
    ask('read_table', name, [encode(jsonText(content))]);
    return engine.bytes();
}
