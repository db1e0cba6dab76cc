#include "host/Memory.hpp"

#include <cstdlib>

#include "host/ErrorIdException.hpp"

void* utMalloc(std::size_t size) { return std::malloc(size == 0 ? 1 : size); }

void* utMallocWithCheck(std::size_t size) {
  void* pointer = utMalloc(size);
  if (pointer == nullptr) throw new ErrorIdException("CALVEX:nomem", "Out of memory.");
  return pointer;
}

void utFree(void* pointer) { std::free(pointer); }
