// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Elements, made of what they hold. Text is never read as HTML.

const isNone = (child) => child === null || child === undefined || child === false;
const nodes = (children) => children.flat(Infinity).filter((child) => !isNone(child));

/**
 * @param {string} tag  with classes: "p.note"
 * @param {Record<string, any>} attributes  "on..." listens, a property of the element is set, all else is an attribute;
 *     false, null and undefined are none
 * @param {...any} children  nodes, texts, lists of them; null and false are none
 */
export function h(tag, attributes = {}, ...children) {
    const [name, ...classes] = tag.split('.');
    const element = document.createElement(name);
    if (classes.length > 0) element.className = classes.join(' ');
    for (const [key, value] of Object.entries(attributes)) {
        if (isNone(value)) continue;
        if (key.startsWith('on')) element.addEventListener(key.slice(2), value);
        else if (key in element && typeof value !== 'string') element[key] = value;
        else element.setAttribute(key, value === true ? '' : value);
    }
    element.append(...nodes(children));
    return element;
}

/** Puts the children in place of what the element holds. */
export function fill(element, ...children) {
    element.replaceChildren(...nodes(children));
}

export const byId = (id) => document.getElementById(id);

let unused = 0;
/** An id that no element has. */
export const newId = (prefix) => `${prefix}-${++unused}`;

/** Says something to those who do not see what changed. */
export function tell(text) {
    byId('told').textContent = text;
}

export function copyButton(text, label = 'Copy') {
    const button = h('button.small', { type: 'button', onclick: () => copy(button, text) }, label);
    return button;
}

/** Copies, and says so on the button. */
export async function copy(button, text) {
    const before = button.textContent;
    try {
        await navigator.clipboard.writeText(text);
        button.textContent = 'Copied';
    } catch {
        button.textContent = 'Not allowed here';
    }
    tell(button.textContent);
    setTimeout(() => (button.textContent = before), 1500);
}

/** Lets the browser draw and answer. */
export const breathe = () =>
    new Promise((resolve) => {
        const channel = new MessageChannel();
        channel.port1.onmessage = resolve;
        channel.port2.postMessage(null);
    });

export function download(name, type, text) {
    const url = URL.createObjectURL(new Blob([text], { type }));
    h('a', { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 10000);
}

/** One of the elements can be reached by the tabulator, the arrows lead to the others. */
export function roving(container, selector, keys) {
    const all = () => [...container.querySelectorAll(selector)];
    const make = (element) => {
        for (const other of all()) other.tabIndex = other === element ? 0 : -1;
    };
    container.addEventListener('focusin', (event) => {
        const element = event.target.closest(selector);
        if (element) make(element);
    });
    container.addEventListener('keydown', (event) => {
        const elements = all();
        const at = elements.indexOf(event.target.closest(selector));
        const to = { [keys[0]]: at - 1, [keys[1]]: at + 1, Home: 0, End: elements.length - 1 }[event.key];
        if (at < 0 || to === undefined || elements[to] === undefined) return;
        event.preventDefault();
        elements[to].focus();
    });
    if (all().length > 0) make(all()[0]);
}
