/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <string.h>

#include <bgpdt/bgpdt.h>

int main(void)
{
    const char *const table = "{\"asNumValue\":65546,\"asType\":1}";
    uint8_t value[8];
    char *json = NULL;
    bgpdt_library *library = NULL;
    const bgpdt_type *as = NULL;
    if (bgpdt_open(NULL, &library, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_find(library, "ASNUM", 5, &as, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_read_table(as, table, strlen(table), value, sizeof value, NULL) != BGPDT_OK)
        return 1;
    printf("AS number %u\n", (unsigned)(value[1] << 16 | value[2] << 8 | value[3]));
    if (bgpdt_table(as, value, sizeof value, &json, NULL, NULL) == BGPDT_OK)
        puts(json);
    bgpdt_free(json);
    bgpdt_close(library);
    return 0;
}
