/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <string.h>

#include <bgpdt/bgpdt.h>

/* Prints the value of a text in hexadecimal, or why there is none. */
static void show(const bgpdt_type *type, const char *text)
{
    uint8_t value[BGPDT_VALUE_ROOM];
    bgpdt_error *error = NULL;
    if (bgpdt_parse(type, text, strlen(text), value, sizeof value, &error) != BGPDT_OK) {
        printf("%s\n", error->message.data);
        bgpdt_error_free(error);
        return;
    }
    for (size_t i = 0; i < bgpdt_about(type)->value_size; ++i)
        printf("%02x", value[i]);
    printf("\n");
}

int main(void)
{
    bgpdt_library *library = NULL;
    const bgpdt_type *type = NULL;
    if (bgpdt_open(NULL, &library, NULL) != BGPDT_OK)
        return 1;
    if (bgpdt_find(library, "VRFRD", strlen("VRFRD"), &type, NULL) == BGPDT_OK) {
        show(type, "192.0.2.1:7");
        show(type, "192.0.2.1:70000");
    }
    bgpdt_close(library);
    return 0;
}
