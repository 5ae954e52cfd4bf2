#include "repository/RegistrationList.h"

namespace Repository {

RegistrationList& RegistrationList::operator=(RegistrationList&& other) noexcept
{
    first.swap(other.first);
    return *this;
}

// One after the other: left to themselves, each would end within the one before, and the stack with them.
RegistrationList::~RegistrationList()
{
    while (first) {
        const std::shared_ptr<Registration> ending = std::move(first);
        first = std::move(ending->next);
    }
}

void RegistrationList::add(std::shared_ptr<Registration> registration)
{
    if (!first) {
        registration->previous = registration.get();
        first = std::move(registration);
        return;
    }
    Registration* const last = first->previous;
    registration->previous = last;
    first->previous = registration.get();
    last->next = std::move(registration);
}

std::shared_ptr<Registration> RegistrationList::take(const Registration& registration)
{
    Registration* const previous = registration.previous;
    if (!first || !previous)
        return {};
    std::shared_ptr<Registration>& place = first.get() == &registration ? first : previous->next;
    std::shared_ptr<Registration> taken = std::move(place);
    place = std::move(taken->next);
    Registration* const next = place ? place.get() : first.get();
    if (next)
        next->previous = previous;
    taken->previous = nullptr;
    return taken;
}

} // namespace Repository
