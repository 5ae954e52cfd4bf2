#pragma once

#include "repository/notification/Registration.h"

#include <cstdint>

namespace Repository {

// Keeps the registrations of one path alive while a thread calls them. A count in each of them would be a
// line of memory that all writers of an attribute wait for; instead the thread notes the path in a place of
// its own, where whoever ends one of its registrations meanwhile leaves it. The thread lets it go when it is
// done.
class HazardGuard
{
public:
    HazardGuard() = default;
    HazardGuard(HazardGuard&& other) noexcept;
    HazardGuard& operator=(HazardGuard&&) = delete;
    ~HazardGuard();

    // With the path's attribute lock held, which the registrations that are in its list by now are taken out
    // under, too. False when the thread holds others already or has no slot; they must be counted then.
    bool begin(std::uint64_t pathHash);

    // For a registration that has left its list. No lock held: it may go, and what its callback captured.
    static void retire(std::uint64_t pathHash, RegistrationPointer registration);

private:
    struct Slot;
    class Claim;

    static Slot* slotOfThread();

    Slot* slot = nullptr; // not owned; null when nothing is held
};

} // namespace Repository
