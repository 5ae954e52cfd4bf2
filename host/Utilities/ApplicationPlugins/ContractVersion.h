#pragma once

#include <QtGlobal>

namespace Utilities::ApplicationPlugins {

// The version of what hosts and plug-ins share: the entry points, and the classes of host/ with their virtual
// operations. Every change that breaks plug-ins which are built already raises it.
constexpr int ContractVersion = 5;

} // namespace Utilities::ApplicationPlugins

extern "C" {

// The version that a plug-in was built against. It is exported beside the three entry points and read before
// any of them is called. A host refuses a plug-in of another version, and one without.
Q_DECL_EXPORT extern const int applicationContractVersion;
}
