#pragma once

#include <cstdint>

// As declared by copyfile(3) of macOS.
using copyfile_state_t = struct _copyfile_state*;
using copyfile_flags_t = std::uint32_t;

#define COPYFILE_ACL (1 << 0)
#define COPYFILE_STAT (1 << 1)
#define COPYFILE_XATTR (1 << 2)
#define COPYFILE_DATA (1 << 3)
#define COPYFILE_ALL (COPYFILE_ACL | COPYFILE_STAT | COPYFILE_XATTR | COPYFILE_DATA)
#define COPYFILE_RECURSIVE (1 << 15)
#define COPYFILE_NOFOLLOW ((1 << 18) | (1 << 19))

extern "C" int copyfile(const char* from, const char* to, copyfile_state_t state, copyfile_flags_t flags);
