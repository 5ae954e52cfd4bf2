#include "repository/notification/RegistrationList.h"

#include <utility>

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
        const RegistrationPointer ending = std::move(first);
        first = std::move(ending->next);
    }
}

void RegistrationList::add(RegistrationPointer registration)
{
    if (!first) {
        registration->previous = registration.data();
        first = std::move(registration);
        return;
    }
    Registration* const last = first->previous;
    registration->previous = last;
    first->previous = registration.data();
    last->next = std::move(registration);
}

RegistrationPointer RegistrationList::take(const Registration& registration)
{
    Registration* const previous = registration.previous;
    if (!first || !previous)
        return {};
    RegistrationPointer& place = first.data() == &registration ? first : previous->next;
    RegistrationPointer taken = std::move(place);
    place = std::move(taken->next);
    Registration* const next = place ? place.data() : first.data();
    if (next)
        next->previous = previous;
    taken->previous = nullptr;
    return taken;
}

} // namespace Repository
