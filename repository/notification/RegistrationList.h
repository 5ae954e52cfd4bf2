#pragma once

#include "repository/notification/Registration.h"

namespace Repository {

// The registrations of one path or pattern, in the order in which they came. They are linked to each other,
// so that a list costs an attribute that nobody watches next to nothing, and one that is watched no memory of
// its own.
class RegistrationList
{
public:
    RegistrationList() = default;
    RegistrationList(RegistrationList&& other) noexcept : first(std::move(other.first)) {}
    RegistrationList& operator=(RegistrationList&& other) noexcept;
    ~RegistrationList();

    bool isEmpty() const { return !first; }

    void add(RegistrationPointer registration);

    // In constant time; null when the registration is in no list.
    RegistrationPointer take(const Registration& registration);

    template <typename Callback>
    void forEach(const Callback& callback) const
    {
        for (const RegistrationPointer* at = &first; *at; at = &(*at)->next)
            callback(*at);
    }

private:
    RegistrationPointer first; // its previous one is the last
};

} // namespace Repository
