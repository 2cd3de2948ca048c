#pragma once

#include <objc/blocks_runtime.h>
