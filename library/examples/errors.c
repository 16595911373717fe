/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <string.h>

#include <bgpdt/bgpdt.h>

/* Prints what is wrong in the text, where, and what would be taken. */
static void show_error(const bgpdt_type *type, const char *text)
{
    bgpdt_error *error = NULL;
    if (bgpdt_why(type, text, strlen(text), &error) == BGPDT_REFUSED && error->reason.size != 0)
        printf("%s\n%*s^ %s\n", text, (int)error->at_character, "", error->reason.data);
    if (error != NULL && error->repair.size != 0)
        printf("would be taken: %s\n", error->repair.data);
    if (error != NULL && error->other_type_count != 0)
        printf("it is a text of %s\n", error->other_types[0].data);
    bgpdt_error_free(error);
}

int main(void)
{
    bgpdt_library *library = NULL;
    const bgpdt_type *rd = NULL;
    bgpdt_error *error = NULL;
    if (bgpdt_open(NULL, &library, &error) != BGPDT_OK) {
        fprintf(stderr, "%s\n", error->message.data);
        bgpdt_error_free(error);
        return 1;
    }
    if (bgpdt_find(library, "VRFRD", 5, &rd, NULL) == BGPDT_OK) {
        show_error(rd, "192.0.2.1:70000");
        show_error(rd, "64496:1:2");
    }
    bgpdt_close(library);
    return 0;
}
