#include "host/UDDatabaseClient.hpp"

UDDatabaseClient* UDDatabaseClient::getInternalClient() {
  static UDDatabaseClient client;
  return &client;
}
