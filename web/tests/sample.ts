// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Uses all of the package, typed; each expected value is worked out by hand.
import {
    check,
    compare,
    differences,
    dialects,
    explain,
    fields,
    fromHex,
    fromTable,
    guess,
    littleEndian,
    lua,
    order,
    parse,
    print,
    printBytes,
    Refusal,
    swap,
    table,
    toHex,
    tryParse,
    type,
    types,
    why,
} from 'bgpdt';
import type { Dialects, Explanation, Fields, Part, TypeInfo } from 'bgpdt';

function same(is: unknown, expected: unknown): void {
    const [left, right] = [is, expected].map((value) =>
        JSON.stringify(value, (_key, part: unknown) => (typeof part === 'bigint' ? `${part}n` : part)),
    );
    if (left !== right) throw new Error(`${left} instead of ${right}`);
}

function refusalOf(work: () => unknown): Refusal {
    try {
        work();
    } catch (error) {
        if (error instanceof Refusal) return error;
        throw error;
    }
    throw new Error('nothing was refused');
}

/** Runs through the whole; throws where something is not as it has to be. */
export function run(): string {
    const rd: Uint8Array = parse('VRFRD', '192.0.2.1:100');
    same(toHex(rd), '0001c0000201006400000000');
    same(toHex(parse('rd', '65551:100')), '00020001000f006400000002');
    same(print('VRFRD', rd), '192.0.2.1:100');
    same(print('VRFRD', rd, { mode: 1 }), '192.0.2.1:100');
    same([...printBytes('VRFRD', fromHex('VRFRD', '0x0000 0001 0000 0002 0000 0001'))], [0x31, 0x3a, 0x32]);
    same(tryParse('VRFRD', 'x'), undefined);
    check('VRFRD', rd);
    same(toHex(littleEndian('VRFRD', parse('VRFRD', '1:2'))), '000000010000000201000000');
    same(toHex(swap('VRFRD', parse('VRFRD', '1:2'))), '000000010000000201000000');

    const refused = refusalOf(() => parse('VRFRD', '192.0.2.1:70000'));
    same([refused.name, refused.code, refused.status], ['Refusal', 'REFUSED', 'SYSDT_ERR_INVALID_VALUE']);
    same([refused.at, refused.length, refused.repair, refused.change], [10, 5, '192.0.2.1:65535', 'value']);
    same(refused.text?.slice(refused.at, refused.at + refused.length), '70000');
    same(why('LARGECOMMUNITY', '64496:1:2'), undefined);
    same(why('COMMUNITY', '1:2:3')?.otherTypes.includes('LARGECOMMUNITY'), true);
    const astral = why('COMMUNITY', '64496:1\u{1F600}');
    same([astral?.at, astral?.length], [7, 2]); // a pair of halves of UTF-16
    same(refusalOf(() => print('VRFRD', new Uint8Array(3))).code, 'REFUSED');
    same(refusalOf(() => parse('ATTRIDBITMAP', '1')).code, 'NO_TEXT');
    same(refusalOf(() => type('NOTYPE')).code, 'NO_TYPE');

    const [one, two] = [parse('VRFRD', '64496:1'), parse('VRFRD', '64496:2')];
    same([compare('VRFRD', one, two), order('VRFRD', two, one), order('VRFRD', one, one)], [-1, 1, 0]);
    same(differences('VRFRD', one, two), [{ name: 'assigned number', first: '1', second: '2' }]);

    const told: Dialects = dialects('rd', '65552:10');
    same([told.asked, told.readings[1]?.reader, told.readings[1]?.change], ['65551:9', 'GoBGP', 'clamps']);
    same(dialects('VRFRD', '?').readings, []);

    const explained: Explanation = explain('VRFRD', one);
    const part: Part | undefined = explained.parts[1];
    same([explained.hex, part?.offset, part?.size, part?.number], ['0000fbf00000000100000001', 8, 4, 1]);
    const named: Fields = fields('VRFRD', one);
    same(named.administrator, 64496);
    same(table('VRFRD', one), { RdType: 1, RdValue: [0, 0, 251, 240, 0, 0, 0, 1] });
    same(toHex(fromTable('VRFRD', table('VRFRD', one))), toHex(one));
    same(lua('VRFRD', one), '{ RdType = 1, RdValue = {0, 0, 251, 240, 0, 0, 0, 1} }');

    // Eight bytes that a number does not hold.
    const node = fromHex(
        'BGPLSPREFIX',
        `00000001 00000003 ffffffffffffffff 0000fbf0 00000000 c0000201 ${'00'.repeat(196)}`,
    );
    same(fields('BGPLSPREFIX', node).identifier, 18446744073709551615n);

    const all: readonly TypeInfo[] = types();
    same([all.length, type('VRFRD').size, type('VRFRD').id], [33, 12, 0x103]);
    same(type('BOLPREFIX').kinds.length, 17); // by the table that the plug-in exports
    same(guess('64496:1:2'), ['LARGECOMMUNITY']);
    return `${all.length} types`;
}
