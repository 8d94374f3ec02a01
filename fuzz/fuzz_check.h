#pragma once
// What the fuzz targets share: turning the bytes into text, and stopping the
// run when an invariant breaks, so that libFuzzer saves the input.

#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

inline QString fuzz_text(const uint8_t* data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

// Not assert(): the build defines NDEBUG, and a broken invariant must end the run.
#define FUZZ_CHECK(condition, what)                                                        \
    do {                                                                                   \
        if (!(condition)) {                                                                \
            std::fprintf(stderr, "%s:%d: invariant broken: %s\n", __FILE__, __LINE__, what); \
            std::abort();                                                                  \
        }                                                                                  \
    } while (false)
