#include "repository/RegistrationHandle.h"

#include "repository/AttributeStore.h"

namespace Repository {

RegistrationHandle::RegistrationHandle(QString target, Registration& filed,
                                       std::weak_ptr<AttributeStore> owner)
    : pathOrPattern(std::move(target)), store(std::move(owner)), registration(&filed)
{
}

void RegistrationHandle::end()
{
    const auto owner = store.lock();
    Registration* const ending = registration.exchange(nullptr, std::memory_order_acq_rel);
    if (owner && ending)
        owner->removeRegistration(pathOrPattern, *ending);
}

} // namespace Repository
