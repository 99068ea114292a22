/* See regex.h. */
#pragma once
#define xmalloc malloc
#define xfree free
