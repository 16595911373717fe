/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>

#include <bgpdt/bgpdt.h>

int main(void)
{
    bgpdt_library *library = NULL;
    if (bgpdt_open(NULL, &library, NULL) != BGPDT_OK)
        return 1;
    /* Types that take text, of values of 12 bytes. */
    for (size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_info *info = bgpdt_about(bgpdt_type_at(library, i));
        if ((info->operations & BGPDT_PARSE) != 0 && info->value_size == 12)
            printf("%-16s %s, such as %s\n", info->name.data, info->about.data, info->samples[0].data);
    }
    bgpdt_close(library);
    return 0;
}
