// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// libbgpdt as it runs in WebAssembly: a call writes what it is given, and reads what is answered.
import { parseJson } from './json.js';

/** The second half of what a function of the module returns to another. */
let second = 0;

/** There are no files, no clock, no environment and no network: what asks for them is told so. */
const missing = () => 52; // ENOSYS of WASI

const imports = {
    env: {
        emscripten_notify_memory_growth() {},
        setTempRet0: (value) => (second = value),
        getTempRet0: () => second,
    },
    wasi_snapshot_preview1: {
        environ_get: missing,
        environ_sizes_get: missing,
        fd_close: missing,
        fd_seek: missing,
        fd_write: missing,
        proc_exit(status) {
            throw new Error(`the module ended with status ${status}`);
        },
    },
};

const encoder = new TextEncoder();
const decoder = new TextDecoder();

/** @param {string} text */
export const encode = (text) => encoder.encode(text);
/** @param {Uint8Array} bytes */
export const decode = (bytes) => decoder.decode(bytes);

/** @param {string} base64  of the module, compressed by gzip */
async function unpacked(base64) {
    const packed = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
    const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream('gzip'));
    return new Response(stream).arrayBuffer();
}

export class Engine {
    /** @param {string} base64  of the module, compressed by gzip */
    static async open(base64) {
        const { instance } = await WebAssembly.instantiate(await unpacked(base64), imports);
        return new Engine(instance.exports);
    }

    /** @param {any} functions  that the module exports */
    constructor(functions) {
        this.functions = functions;
        functions._initialize?.();
        if (functions.open() < 0) throw new Error(this.text());
    }

    /**
     * Calls a function of the module, which may grow the memory: what is answered has to be read before the next call.
     *
     * @param {string} name
     * @param {Uint8Array[]} given  one behind the other
     * @param {...number} numbers
     * @returns {number} its code
     */
    call(name, given, ...numbers) {
        const size = given.reduce((sum, bytes) => sum + bytes.length, 0);
        let at = this.functions.given(size);
        for (const bytes of given) {
            new Uint8Array(this.functions.memory.buffer).set(bytes, at);
            at += bytes.length;
        }
        return this.functions[name](...numbers);
    }

    /** What the last call answered. */
    bytes() {
        const { memory, answered, answered_size } = this.functions;
        return new Uint8Array(memory.buffer, answered(), answered_size()).slice();
    }
    text() {
        return decode(this.bytes());
    }
    json() {
        return parseJson(this.text());
    }
}
