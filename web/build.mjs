// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// build.mjs MODULE OUT: makes OUT/npm, the package, and OUT/playground.html, the page, of the WebAssembly module.
import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { copyFileSync, mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { constants, gzipSync } from 'node:zlib';
import { build, transform } from 'esbuild';

const [module, out] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const npm = join(out, 'npm');
const packageFiles = ['README.md', 'index.js', 'index.d.ts', 'engine.js', 'json.js'];

/** As servers compress it. */
const compressed = (content) => gzipSync(content, { level: constants.Z_BEST_COMPRESSION });
/** As small as gzip can be. */
const wasm = execFileSync('zopfli', ['--i15', '-c', module], { maxBuffer: 1 << 24 });

/** With the version that CMakeLists.txt tells. */
function manifest() {
    const [, version] = /project\(bgp_datatype VERSION (\S+)/.exec(
        readFileSync(join(here, '..', 'CMakeLists.txt'), 'utf8'),
    );
    const { name, ...others } = JSON.parse(readFileSync(join(here, 'npm', 'package.json'), 'utf8'));
    return JSON.stringify({ name, version, ...others }, null, 4);
}

function makePackage() {
    rmSync(npm, { recursive: true, force: true });
    mkdirSync(npm, { recursive: true });
    for (const file of packageFiles) copyFileSync(join(here, 'npm', file), join(npm, file));
    writeFileSync(join(npm, 'package.json'), `${manifest()}\n`);
    copyFileSync(join(here, '..', 'LICENSE'), join(npm, 'LICENSE'));
    writeFileSync(
        join(npm, 'wasm.js'),
        `// SPDX-FileCopyrightText: 2026 The bgpdt authors\n// SPDX-License-Identifier: Apache-2.0\n// libbgpdt as WebAssembly, compressed by gzip.\nexport const wasm =\n    '${wasm.toString('base64')}';\n`,
    );
}

/** The page's scripts in one; the package is the one that was just made. */
async function script() {
    const made = {
        name: 'made-package',
        setup: (builder) => builder.onResolve({ filter: /^\.\/wasm\.js$/ }, () => ({ path: resolve(npm, 'wasm.js') })),
    };
    const bundle = await build({
        entryPoints: [join(here, 'page', 'main.js')],
        bundle: true,
        minify: true,
        format: 'esm',
        target: 'es2022',
        write: false,
        legalComments: 'none',
        plugins: [made],
    });
    return bundle.outputFiles[0].text.trim().replaceAll('</script', '<\\/script');
}

async function style() {
    const css = readFileSync(join(here, 'page', 'style.css'), 'utf8');
    return (await transform(css, { loader: 'css', minify: true, target: 'es2022', legalComments: 'none' })).code.trim();
}

const hashed = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

/** Only what stands in the page runs, and nothing is loaded from anywhere. */
function policy(styles, scripts) {
    return [
        `default-src 'none'`,
        `script-src ${hashed(scripts)} 'wasm-unsafe-eval'`,
        `style-src ${hashed(styles)}`,
        `img-src data:`,
        `base-uri 'none'`,
        `form-action 'none'`,
    ].join('; ');
}

async function makePage() {
    const parts = { style: await style(), script: await script() };
    parts.policy = policy(parts.style, parts.script);
    const page = readFileSync(join(here, 'page', 'index.html'), 'utf8').replace(
        /@(policy|style|script)@/g,
        (_all, part) => parts[part],
    );
    writeFileSync(join(out, 'playground.html'), page);
    return page;
}

makePackage();
const page = await makePage();
const sizes = { module: readFileSync(module), 'module, compressed': wasm, page, 'page, compressed': compressed(page) };
for (const [name, content] of Object.entries(sizes))
    console.log(`${name}: ${Math.ceil(Buffer.byteLength(content) / 1024)} KiB`);
