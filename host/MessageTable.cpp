#include "host/MessageTable.hpp"

#include <algorithm>
#include <vector>

struct utMemoryContext {
  std::vector<const ut_message_table*> tables;
};

utMemoryContext* utGetMemoryContext() {
  static utMemoryContext context;
  return &context;
}

void ut_mem_add_primary_message_table(utMemoryContext* context, const ut_message_table* table) {
  auto& tables = context->tables;
  if (std::find(tables.begin(), tables.end(), table) == tables.end()) tables.push_back(table);
}

const char* utLookupMessage(std::uint32_t messageId) {
  for (const ut_message_table* table : utGetMemoryContext()->tables) {
    if (table->count == 0) continue;
    // Catalogs number their rows consecutively; try the row the id points to first.
    std::uint32_t row = messageId - table->ids[0];
    if (row < table->count && table->ids[row] == messageId) return table->texts[row];
    for (row = 0; row < table->count; ++row) {
      if (table->ids[row] == messageId) return table->texts[row];
    }
  }
  return nullptr;
}
