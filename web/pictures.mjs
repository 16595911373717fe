// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// pictures.mjs FOLDER: takes pictures of the page for the documentation, by pngquant in few colours.
import { execFileSync } from 'node:child_process';
import { openBrowser, page as address } from './tests/places.mjs';

const [folder] = process.argv.slice(2);
const pictures = {
    playground: { type: 'EVNPREFIX', text: '100:48:0000-5e00-5301:32:192.0.2.1' },
    playground_refusal: { type: 'VRFRD', text: '192.0.2.1:70000' },
};
const heights = { playground: 850, playground_refusal: 640 };

const browser = await openBrowser();
for (const [name, state] of Object.entries(pictures)) {
    const page = await browser.newPage({ viewport: { width: 1080, height: heights[name] } });
    await page.goto(`${address}#${new URLSearchParams(state)}`);
    await page.waitForSelector('html[data-ready]');
    if (name === 'playground') await page.hover('.block >> nth=4');
    await page.waitForTimeout(500); // until nothing fades
    const file = `${folder}/${name}.png`;
    await page.screenshot({ path: file });
    execFileSync('pngquant', ['--force', '--strip', '--speed=1', '--output', file, '64', file]);
}
await browser.close();
