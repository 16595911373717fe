/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <string.h>

#include <bgpdt/bgpdt.h>

/* Prints what a text is: as the type writes it, and in bytes. */
static int show(const bgpdt_type *type, const char *text, bgpdt_error **error)
{
    uint8_t value[BGPDT_VALUE_ROOM];
    char printed[BGPDT_TEXT_ROOM];
    const size_t size = bgpdt_about(type)->value_size;
    size_t length = 0;
    int code = bgpdt_parse(type, text, strlen(text), value, size, error);
    if (code == BGPDT_OK)
        code = bgpdt_print(type, value, size, printed, sizeof printed, &length, error);
    if (code != BGPDT_OK)
        return code;
    printf("%s is ", printed);
    for (size_t i = 0; i < size; ++i)
        printf("%02x", value[i]);
    puts("");
    return BGPDT_OK;
}

int main(void)
{
    const char *const texts[] = {"192.0.2.1:7", "192.0.2.1:70000"};
    bgpdt_library *library = NULL;
    const bgpdt_type *rd = NULL;
    bgpdt_error *error = NULL;
    if (bgpdt_open(NULL, &library, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_find(library, "VRFRD", 5, &rd, NULL) != BGPDT_OK)
        return 1;
    for (size_t i = 0; i < sizeof texts / sizeof texts[0]; ++i) {
        if (show(rd, texts[i], &error) != BGPDT_OK)
            puts(error->message.data);
        bgpdt_error_free(error);
    }
    bgpdt_close(library);
    return 0;
}
