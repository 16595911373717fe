// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The package as others get it: packed, installed in an empty project, type-checked, and run in Node, in a worker, in a
// browser and in a browser's worker under a strict policy.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { once } from 'node:events';
import { copyFileSync, mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { extname, join } from 'node:path';
import test, { after, before } from 'node:test';
import { Worker } from 'node:worker_threads';
import { built, openBrowser, top } from './places.mjs';

const largest = 200 * 1024;
let project;
let packed;
const run = (program, ...parameters) =>
    execFileSync(program, parameters, { cwd: project, encoding: 'utf8', stdio: ['ignore', 'pipe', 'pipe'] });

before(() => {
    project = mkdtempSync(join(tmpdir(), 'bgpdt-'));
    [packed] = JSON.parse(run('npm', 'pack', '--json', `${built}/npm`));
    writeFileSync(join(project, 'package.json'), '{"private": true, "type": "module"}');
    run('npm', 'install', '--offline', '--no-audit', '--no-fund', `./${packed.filename}`);
    copyFileSync(`${top}/web/tests/sample.ts`, join(project, 'sample.ts'));
    const options = {
        strict: true,
        target: 'es2022',
        module: 'nodenext',
        skipLibCheck: false,
        types: [],
        lib: ['es2022'],
        allowImportingTsExtensions: false,
    };
    writeFileSync(join(project, 'tsconfig.json'), JSON.stringify({ compilerOptions: options, files: ['sample.ts'] }));
});
after(() => rmSync(project, { recursive: true }));

test('it holds what it says, and is small', () => {
    const files = packed.files.map((file) => file.path).sort();
    assert.deepEqual(files, [
        'LICENSE',
        'README.md',
        'engine.js',
        'index.d.ts',
        'index.js',
        'json.js',
        'package.json',
        'wasm.js',
    ]);
    const version = /VERSION (\d+\.\d+\.\d+)/.exec(readFileSync(`${top}/CMakeLists.txt`, 'utf8'))[1];
    assert.equal(packed.version, version);
    assert(packed.size <= largest, `${packed.size} bytes`);
    console.log(`proved: the package has ${Math.ceil(packed.size / 1024)} KiB`);
});

test('its types are those of its functions', () => {
    run(`${top}/web/node_modules/.bin/tsc`, '-p', '.');
    assert(statSync(join(project, 'sample.js')).isFile());
});

test('it runs in Node', () => {
    assert.equal(run('node', '-e', 'import("./sample.js").then(({ run }) => console.log(run()))'), '33 types\n');
});

test('its README tells the truth', () => {
    const [, code] = /```js\n([^]*?)```/.exec(readFileSync(`${built}/npm/README.md`, 'utf8'));
    writeFileSync(join(project, 'readme.js'), code);
    const told = run('node', 'readme.js').split('\n');
    const expected = [...code.matchAll(/console\.log\(.*\); \/\/ (.*)/g)].map((match) => match[1]);
    assert(expected.length >= 5);
    for (const line of expected) assert(told.includes(line), `"${line}" is not what it prints: ${told}`);
});

test('it runs in a worker of Node', async () => {
    writeFileSync(
        join(project, 'worker.js'),
        `import { parentPort } from 'node:worker_threads'; import { run } from './sample.js'; parentPort.postMessage(run());`,
    );
    const worker = new Worker(join(project, 'worker.js'));
    assert.equal(await new Promise((resolve, reject) => worker.on('message', resolve).on('error', reject)), '33 types');
});

/** Serves the project, with a policy that lets no script run that is not its own, and no string be run. */
function serve() {
    const media = { '.js': 'text/javascript', '.html': 'text/html' };
    return createServer((request, response) => {
        const path = join(project, new URL(request.url, 'http://x').pathname);
        response.setHeader('Content-Type', media[extname(path)] ?? 'text/plain');
        response.setHeader(
            'Content-Security-Policy',
            "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; worker-src 'self'",
        );
        try {
            response.end(readFileSync(path));
        } catch {
            response.writeHead(404).end();
        }
    });
}

test('it runs in a browser and in its workers', async (t) => {
    const code = readFileSync(join(project, 'sample.js'), 'utf8').replace("'bgpdt'", "'/node_modules/bgpdt/index.js'");
    writeFileSync(join(project, 'in_browser.js'), code);
    writeFileSync(join(project, 'browser_worker.js'), `import { run } from './in_browser.js'; postMessage(run());`);
    writeFileSync(join(project, 'main.js'), `import { run } from './in_browser.js'; document.title = run();`);
    writeFileSync(join(project, 'index.html'), '<!DOCTYPE html><script type="module" src="main.js"></script>');
    const server = serve().listen(0, '127.0.0.1');
    await once(server, 'listening');
    const browser = await openBrowser();
    t.after(() => Promise.all([browser.close(), new Promise((resolve) => server.close(resolve))]));
    const page = await browser.newPage();
    page.on('pageerror', (error) => assert.fail(error));
    await page.goto(`http://127.0.0.1:${server.address().port}/index.html`);
    await page.waitForFunction('document.title === "33 types"');
    const inWorker = await page.evaluate(
        () =>
            new Promise((resolve, reject) => {
                const worker = new Worker('browser_worker.js', { type: 'module' });
                worker.onmessage = (event) => resolve(event.data);
                worker.onerror = (event) => reject(new Error(event.message));
            }),
    );
    assert.equal(inWorker, '33 types');
    console.log('proved: the package runs in Node, in a browser, and in workers of both');
});
