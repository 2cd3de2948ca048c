#pragma once

#include "platform/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// A finding: the fuzzer stores the input that led here.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

inline QByteArrayView bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {data, static_cast<qsizetype>(size)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
