#pragma once

// File: MessageTable.hpp
// The host's message-table service. A library hands it one constant catalog record;
// afterwards every message of the catalog can be raised or printed by its id.
//
// Example:
//   ut_mem_add_primary_message_table(utGetMemoryContext(), &myCatalog);
//   const char* text = utLookupMessage(0x470009);  // "Referenced unit '%s' does not exist."

#include <cstdint>

// The catalog record, field by field as the host reads it.
struct ut_message_table {
  std::uint32_t count;
  std::uint32_t facility;
  const std::uint32_t* ids;
  const char* const* keys;
  const char* const* texts;
  const char* component;
  const void* reserved[3];
};

struct utMemoryContext;

utMemoryContext* utGetMemoryContext();

// Makes the catalog's messages known under their ids. The catalog must outlive the
// process (the host keeps the pointer). Adding the same catalog twice is harmless.
void ut_mem_add_primary_message_table(utMemoryContext* context, const ut_message_table* table);

// The registered text of a message id, or null when no registered catalog has it.
const char* utLookupMessage(std::uint32_t messageId);
