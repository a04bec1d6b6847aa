#include "COMMON/FreeMemory.h"

#include <sys/mman.h>

bool IsMemoryFree(size_t bytes) {
    void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory != MAP_FAILED && munmap(memory, bytes) == 0;
}
