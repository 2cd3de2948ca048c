#pragma once

// The file flags and times of BSD systems: types suffice for compiling, values are meaningless.
#include_next <sys/stat.h>

#define st_mtimespec st_mtim

#define st_flags st_mode
#define UF_HIDDEN 0x00008000
