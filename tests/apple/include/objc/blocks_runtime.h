#pragma once

// The part of the blocks runtime that GNUstep's headers need; nothing is linked here.
extern "C" {
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}

#define Block_copy(...) ((__typeof(__VA_ARGS__))_Block_copy((const void*)(__VA_ARGS__)))
#define Block_release(...) _Block_release((const void*)(__VA_ARGS__))
