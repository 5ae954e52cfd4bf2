#pragma once

#include "repository/Registration.h"

#include <memory>

namespace Repository {

// The registrations of one path, in the order in which they came. They are linked to each other, so that a
// list costs an attribute that nobody watches next to nothing, and one that is watched no memory of its own.
class RegistrationList
{
public:
    RegistrationList() = default;
    RegistrationList(RegistrationList&& other) noexcept : first(std::move(other.first)) {}
    RegistrationList& operator=(RegistrationList&& other) noexcept;
    ~RegistrationList();

    bool isEmpty() const { return !first; }

    void add(std::shared_ptr<Registration> registration);

    // Null when the registration is in no list.
    std::shared_ptr<Registration> take(const Registration& registration);

    template <typename Callback>
    void forEach(const Callback& callback) const
    {
        for (const std::shared_ptr<Registration>* at = &first; *at; at = &(*at)->next)
            callback(*at);
    }

private:
    std::shared_ptr<Registration> first; // its previous one is the last
};

} // namespace Repository
