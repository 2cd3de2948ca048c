#pragma once

// The file flags of BSD systems: of the right kind to be compiled, without meaning here.
#include_next <sys/stat.h>

#define st_flags st_mode
#define UF_HIDDEN 0x00008000
