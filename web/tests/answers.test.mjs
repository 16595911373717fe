// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// WebAssembly answers all that can be asked about the vectors as the native build does: codes, bytes, texts, JSON.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { createInterface } from 'node:readline';
import test from 'node:test';
import { Engine } from '../../build/web/npm/engine.js';
import { wasm } from '../../build/web/npm/wasm.js';
import { top } from './places.mjs';

const native = {
    program: `${top}/build/release/web/tests/bgpdt_web_answers`,
    plugin: `${top}/build/release/src/libbgp_datatype.so`,
};

/** A call in the line, and what became of it; "." ends what may be empty. */
function callOf(line) {
    const [name, index, mode, given, code, answered] = line.split(' ');
    return {
        name,
        index: Number(index),
        mode: Number(mode),
        given: Buffer.from(given.slice(0, -1), 'hex'),
        code: Number(code),
        answered: answered.slice(0, -1),
    };
}

test('the answers are the native ones', async () => {
    const engine = await Engine.open(wasm);
    const child = spawn(native.program, { env: { BGPDT_PLUGIN: native.plugin }, stdio: ['ignore', 'pipe', 'inherit'] });
    const calls = new Map();
    let ended = false;
    for await (const line of createInterface({ input: child.stdout, crlfDelay: Infinity })) {
        assert(!ended, 'something stands behind the end');
        ended = line === 'end';
        if (ended) continue;
        const call = callOf(line);
        const code = engine.call(call.name, [call.given], engine.functions.type(call.index, call.mode));
        assert.equal(code, call.code, line);
        if (call.answered !== '') assert.equal(Buffer.from(engine.bytes()).toString('hex'), call.answered, line);
        calls.set(call.name, (calls.get(call.name) ?? 0) + 1);
    }
    assert(ended, 'the native program did not come to its end');
    const all = [...calls.values()].reduce((sum, count) => sum + count, 0);
    assert(all > 50000 && calls.size === 16, `${all} calls of ${calls.size} functions`);
    console.log(`proved: ${all} answers of ${calls.size} functions are the native ones in WebAssembly`);
});
