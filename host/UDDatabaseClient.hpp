#pragma once

// File: UDDatabaseClient.hpp
// Who is asking, for property access and object creation. The host's own calls (the
// interpreter's get, set and method calls) use the internal client.
//
// Example:
//   void* value = object->get(UDDatabaseClient::getInternalClient(), nameProperty);

class UDDatabaseClient {
 public:
  // The host's own client; it lives for the whole process.
  static UDDatabaseClient* getInternalClient();

 private:
  UDDatabaseClient() = default;
};
