/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
/* Stands in front of the C library's memory: each request can be refused in turn. Loaded with LD_PRELOAD. getppid(), which
 * Python calls without any memory, ends it and tells how many requests were refused. */
#include <errno.h>
#include <stddef.h>
#include <sys/types.h>

void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);

static long number, requests, refused;
static int alone;

void refuse(long which, int only)
{
    requests = 0;
    refused = 0;
    alone = only;
    number = which;
}

pid_t getppid(void)
{
    number = 0;
    return (pid_t)(refused > 200 ? 200 : refused);
}

static int grants(void)
{
    if (number == 0)
        return 1;
    ++requests;
    if (alone ? requests != number : requests < number)
        return 1;
    ++refused;
    errno = ENOMEM;
    return 0;
}

void *malloc(size_t size) { return grants() ? __libc_malloc(size) : NULL; }
void *calloc(size_t count, size_t size) { return grants() ? __libc_calloc(count, size) : NULL; }
void *realloc(void *block, size_t size) { return grants() ? __libc_realloc(block, size) : NULL; }
