/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>

#include <bgpdt/bgpdt.h>

int main(void)
{
    /* "64496:1", "64496:70000", "no-export", back to back */
    const char bytes[] = "64496:164496:70000no-export";
    const uint32_t offsets[] = {0, 7, 18, 27};
    const bgpdt_column column = {
        sizeof column, 3, offsets, sizeof offsets[0], bytes, sizeof bytes - 1, NULL};
    uint8_t values[3 * 8];
    uint8_t valid[1];
    size_t row = 0;
    bgpdt_refused refused = {sizeof refused, 0, &row, 1};
    bgpdt_library *library = NULL;
    const bgpdt_type *type = NULL;
    if (bgpdt_open(NULL, &library, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_find(library, "COMMUNITY", 9, &type, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_parse_many(type, &column, values, sizeof values, valid, sizeof valid, &refused) !=
        BGPDT_OK)
        return 1;
    printf("%zu of %zu refused, the first is row %zu\n", refused.count, column.count, row);
    printf("row 2 is %02x%02x%02x%02x\n", values[16], values[17], values[18], values[19]);
    bgpdt_close(library);
    return 0;
}
