// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/**
 * BGP's data types as a router keeps them.
 *
 * A type turns text to a value and a value to text, tells why it refuses a text, orders values, and takes them to their
 * fields. A value is so many bytes as its type says; its numbers stand in the byte order of the router's big-endian
 * processor. All of it runs in WebAssembly that the package holds: nothing is loaded, nothing is sent.
 */

/** What a type does. */
export type Operation = 'parse' | 'print' | 'check' | 'help' | 'compare' | 'table' | 'value' | 'swap';

/** A kind of value, of the types whose values begin with a sub-kind word. */
export interface Kind {
    /** The sub-kind word. */
    readonly number: number;
    readonly name: string;
    /** What it is, in a few words. */
    readonly about: string;
    /** What its help says of its text; often empty. */
    readonly form: string;
    readonly operations: readonly Operation[];
}

/** What is known of a type. */
export interface TypeInfo {
    readonly name: string;
    /** What it is, in a few words. */
    readonly about: string;
    /** The router's number of it. */
    readonly id: number;
    /** The size of its values in bytes. */
    readonly size: number;
    /** How the router keeps its values. */
    readonly storage: 'structured' | 'string' | 'binary';
    /** The mode in which text is converted, unless another is asked for. */
    readonly mode: number;
    /** Which texts it takes, in a sentence; empty for one that takes none. */
    readonly grammar: string;
    /** Texts that it takes, one of each form. */
    readonly samples: readonly string[];
    /** What its help says of its input. */
    readonly help: readonly string[];
    readonly operations: readonly Operation[];
    readonly kinds: readonly Kind[];
}

export interface Options {
    /** The router's mode of conversion, 0 to 6, in place of the type's usual one. */
    mode?: number;
}

/** A form of text that a type would have taken. */
export interface Form {
    /** The kind of value; empty for a type without kinds. */
    kind: string;
    /** What the kind's help says of its text. */
    form: string;
    /** A text of it. */
    example: string;
}

/** Why something was refused or could not be done. */
export class Refusal extends Error {
    readonly name: 'Refusal';
    readonly code:
        | 'REFUSED'
        | 'NO_TEXT'
        | 'NO_OPERATION'
        | 'NO_TYPE'
        | 'NO_PLUGIN'
        | 'NO_ROOM'
        | 'NO_MEMORY'
        | 'NO_SENSE'
        | 'FAILED';
    /** The router's own answer, "SYSDT_ERR_..."; empty where the type was not asked. */
    readonly status: string;
    /** Of a refused text: what is wrong in it. Empty if nothing near it is taken. */
    readonly reason: string;
    /** The text that was refused; undefined where it was none. */
    readonly text: string | undefined;
    /** The index of the first character that is wrong; what is missing belongs in front of it. */
    readonly at: number;
    /** How much is wrong, as strings count; 0: something is missing. */
    readonly length: number;
    /** The nearest text that is taken. */
    readonly repair: string | undefined;
    /** What the repair is: the same in another spelling, completed from an example, another value. */
    readonly change: 'spelling' | 'example' | 'value' | undefined;
    /** The types that take the text as it stands, the likeliest first. */
    readonly otherTypes: readonly string[];
    /** What the type takes, of types whose forms differ much. */
    readonly forms: readonly Form[];
}

/** A bigint where a number would not hold it. */
export type Integer = number | bigint;

/** Bytes that stand together in a value. */
export interface Part {
    /** The first byte, from 0. */
    offset: number;
    /** In bytes. */
    size: number;
    hex: string;
    /** What the number stands for, else how it is read. */
    meaning: string;
    /** None for bytes without a name. */
    name?: string;
    /** As people read it. */
    value?: string;
    /** The script field. */
    key?: string;
    /** The number, or the numbers of an array. */
    number?: Integer | Integer[];
    /** What the value is made of, if of more than one. */
    fields?: Fields;
}

/** Fields by their names: numbers, or texts where the number stands for something. */
export type Fields = Record<string, Integer | string>;

/** A script table, or the number that stands in its place. */
export type Table = null | boolean | Integer | string | Table[] | { [key: string]: Table };

/** A value taken to its fields, as docs/bgpdt.schema.json of the project tells it. */
export interface Explanation {
    schema: 2;
    type: string;
    about: string;
    byte_order: 'target';
    size: number;
    hex: string;
    kind?: string;
    /** By offset, without gaps. */
    parts: Part[];
    text: string | null;
    table: Table;
    /** Why there is no text. */
    no_text?: string;
    /** Why there is no table. */
    no_table?: string;
}

/** What one BGP speaker makes of a text. */
export interface Reading {
    reader: string;
    version?: string;
    /** "taken", "refused", or what else became of it. */
    answer: string;
    /** What it announces, on the wire. */
    hex?: string;
    /** The same in numbers. */
    value?: string;
    /** What became of the text's numbers. */
    change?: 'clamps' | 'wraps' | 'reads otherwise';
}

export interface Dialects {
    schema: 2;
    type: string;
    text: string;
    /** The text that the speakers were asked about: this one, or one of the same shape; empty if there is none. */
    asked: string;
    readings: Reading[];
}

/** A field in which two values differ. */
export interface Difference {
    name: string;
    /** In the first value; none if it has no such field. */
    first?: string;
    second?: string;
}

export type Order = -1 | 0 | 1;

/** All types in the order of the router's registration. */
export function types(): readonly TypeInfo[];
/** The type of the name in any case, or of a word that people use, such as "rt". Throws a {@link Refusal}. */
export function type(name: string): TypeInfo;
/** The names of the types that take a text, the likeliest first; not those of any text or number. */
export function guess(text: string): string[];

/** Text to a value. Throws a {@link Refusal} with its reason, which takes a millisecond or so to find. */
export function parse(type: string, text: string, options?: Options): Uint8Array;
/** Text to a value; undefined, without a reason, where it is refused. */
export function tryParse(type: string, text: string, options?: Options): Uint8Array | undefined;
/** Why a text is refused; undefined if it is taken. */
export function why(type: string, text: string, options?: Options): Refusal | undefined;
/** How other BGP speakers read the text, or one of the same shape. */
export function dialects(type: string, text: string): Dialects;
/** A value to text; what is no UTF-8 in it becomes U+FFFD. Throws a {@link Refusal}. */
export function print(type: string, value: Uint8Array, options?: Options): string;
/** The text as bytes; in some modes, bytes that are no text. */
export function printBytes(type: string, value: Uint8Array, options?: Options): Uint8Array;
/** Throws a {@link Refusal} if the router does not allow the value. */
export function check(type: string, value: Uint8Array): void;
/** The value with the byte order of its numbers reversed as the router does it. */
export function swap(type: string, value: Uint8Array): Uint8Array;
/** The value with its numbers as a little-endian router keeps them. */
export function littleEndian(type: string, value: Uint8Array): Uint8Array;
/** Bytes in hexadecimal to a value: "0x" may stand in front, blanks, ":", "_" and "-" between bytes. */
export function fromHex(type: string, hex: string): Uint8Array;
export function toHex(value: Uint8Array): string;

/** The router's own order: unlike bytes may be equal. Throws a {@link Refusal} where it has none. */
export function compare(type: string, first: Uint8Array, second: Uint8Array): Order;
/** The order in which values are sorted: the router's where it has one, else that of their bytes. */
export function order(type: string, first: Uint8Array, second: Uint8Array): Order;

/** The value's bytes, field by field. */
export function explain(type: string, value: Uint8Array): Explanation;
/** The value's fields by their names. */
export function fields(type: string, value: Uint8Array): Fields;
/** The fields in which two values differ. */
export function differences(type: string, first: Uint8Array, second: Uint8Array): Difference[];
/** The value's script table. */
export function table(type: string, value: Uint8Array): Table;
/** The same as Lua writes it. */
export function lua(type: string, value: Uint8Array): string;
/** The value that a script table says. */
export function fromTable(type: string, table: Table): Uint8Array;
