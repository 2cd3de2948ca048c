#pragma once

#include <cstdint>

// As declared by copyfile(3) of macOS.
using copyfile_state_t = struct _copyfile_state*;
using copyfile_flags_t = std::uint32_t;

#define COPYFILE_ALL 0xF
#define COPYFILE_RECURSIVE (1 << 15)
#define COPYFILE_NOFOLLOW ((1 << 18) | (1 << 19))

extern "C" int copyfile(const char* from, const char* to, copyfile_state_t state, copyfile_flags_t flags);
