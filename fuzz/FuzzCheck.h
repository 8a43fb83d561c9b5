#pragma once

#include <cstdio>
#include <cstdlib>

// A broken invariant ends the run like a crash, so the fuzzer keeps the input.
#define FUZZ_CHECK(cond)                                                                                               \
    do {                                                                                                               \
        if (!(cond)) {                                                                                                 \
            std::fprintf(stderr, "check failed at %s:%d: %s\n", __FILE__, __LINE__, #cond);                            \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (0)
