#include "Tallyfold/ProcessMemory.h"

#include <malloc.h>

void giveBackLargeBlocks()
{
    // Set once, it also keeps the allocator from raising the limit by itself after the first large block.
    constexpr int largeBlock = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, largeBlock);
}
