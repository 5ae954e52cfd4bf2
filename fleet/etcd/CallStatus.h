#pragma once

#include "fleet/etcd/EtcdConnection.h"

#include <string>

namespace Vantry::Etcd {

// What the end of a call to an endpoint means for the caller.
Repository::StoreResult resultOf(const CallEnd& end, const std::string& endpoint);

// Whether the token of the user is not good any more.
bool asksForToken(const CallEnd& end);

} // namespace Vantry::Etcd
