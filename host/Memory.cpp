#include "host/Memory.hpp"

#include "host/ErrorIdException.hpp"

#include <cstdlib>

void* utMalloc(std::size_t size) { return std::malloc(size == 0 ? 1 : size); }

void* utMallocWithCheck(std::size_t size) {
  void* pointer = utMalloc(size);
  if (pointer == nullptr) throw new ErrorIdException("CALVEX:nomem", "Out of memory.");
  return pointer;
}

void utFree(void* pointer) { std::free(pointer); }
