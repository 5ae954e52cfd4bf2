#include "repository/store/RegistrationHandle.h"

#include "repository/store/Subscriptions.h"

namespace Repository {

RegistrationHandle::RegistrationHandle(QString target, Registration& filed,
                                       std::weak_ptr<AttributeTree> owner)
    : pathOrPattern(std::move(target)), tree(std::move(owner)), registration(&filed)
{
}

void RegistrationHandle::end()
{
    const auto owner = tree.lock();
    Registration* const ending = registration.exchange(nullptr, std::memory_order_acq_rel);
    if (owner && ending)
        Subscriptions::remove(*owner, pathOrPattern, *ending);
}

} // namespace Repository
