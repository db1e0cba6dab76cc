#pragma once

// File: CVFcnTable.hpp
// The table of host-callable functions that a module hands to the host when it is
// loaded (QueryCVFcnTable_<module>). The host registers each entry under its name.
//
// Example:
//   const CVFcnTable* table = QueryCVFcnTable_zo_units();
//   for (int i = 0; i < table->count; ++i) hostRegisterFunction(table->entries[i].name, ...);

class HostArray;

struct CVFcnTableEntry {
  const char* name;
  void (*function)(int nlhs, HostArray** plhs, int nrhs, HostArray** prhs);
};

struct CVFcnTable {
  int count;
  const CVFcnTableEntry* entries;
};
