#pragma once

// The host's allocator. Values that a method hands to the host (result bytes and
// doubles) are allocated here and freed by the host with `utFree`.

#include <cstddef>

void* utMalloc(std::size_t size);

// As utMalloc, but raises the host error "CALVEX:nomem" instead of returning null.
void* utMallocWithCheck(std::size_t size);

void utFree(void* pointer);
