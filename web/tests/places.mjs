// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Where things are, and how the browser is started.
import { dirname } from 'node:path';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

export const top = dirname(dirname(dirname(fileURLToPath(import.meta.url))));
export const built = `${top}/build/web`;
export const page = `file://${built}/playground.html`;

/** A browser that talks to nobody. */
export const openBrowser = () =>
    chromium.launch({
        executablePath: '/usr/bin/chromium',
        args: [
            '--no-sandbox',
            '--disable-gpu',
            '--disable-quic',
            '--no-first-run',
            '--disable-background-networking',
            '--disable-component-update',
            '--disable-sync',
        ],
    });
