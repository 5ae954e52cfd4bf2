#pragma once

#include "repository/fleet/StoreTransport.h"

#include <grpcpp/grpcpp.h>
#include <string>

namespace Vantry::Etcd {

// What the status of a call to an endpoint means for the caller.
Repository::StoreResult resultOf(const grpc::Status& status, const std::string& endpoint);

// Whether the token of the user is not good any more.
bool asksForToken(const grpc::Status& status);

} // namespace Vantry::Etcd
