#include "repository/notification/HazardGuard.h"

#include <array>
#include <atomic>
#include <mutex>
#include <utility>

namespace Repository {

namespace {

// What a slot says: 0 while nothing is held, otherwise the hash of a path, with the following bit.
constexpr std::uint64_t isHeld = 2;
constexpr std::uint64_t hasLeftOnes = 1;

std::uint64_t heldPath(std::uint64_t pathHash)
{
    return (pathHash << 2) | isHeld;
}

} // namespace

// Where a thread says what it holds. Only that thread begins and ends; others only set the bit of what it
// holds.
struct alignas(64) HazardGuard::Slot
{
    void end();
    void leave(std::uint64_t path, const RegistrationPointer& registration);

    static std::array<Slot, 64> all;

    std::atomic<std::uint64_t> held{0};
    std::atomic<bool> isTaken{false}; // by a thread
    std::mutex mutex;                 // guards what follows
    Registrations left;
};

std::array<HazardGuard::Slot, 64> HazardGuard::Slot::all;

void HazardGuard::Slot::end()
{
    if ((held.exchange(0, std::memory_order_acq_rel) & hasLeftOnes) == 0)
        return;
    Registrations ending; // without the lock
    const std::lock_guard lock(mutex);
    ending.swap(left);
}

// The thread ends what it holds and looks at the bit in one operation: either it finds what is left here,
// or the bit comes too late and nothing needs to be left.
void HazardGuard::Slot::leave(std::uint64_t path, const RegistrationPointer& registration)
{
    const std::lock_guard lock(mutex);
    left.push_back(registration);
    std::uint64_t found = path;
    const bool isBitSet = held.compare_exchange_strong(found, path | hasLeftOnes, std::memory_order_acq_rel);
    if (!isBitSet && found != (path | hasLeftOnes))
        left.pop_back();
}

// A thread's slot, from its first hold until it ends.
class HazardGuard::Claim
{
public:
    Claim()
    {
        for (Slot& each : Slot::all) {
            if (!each.isTaken.load(std::memory_order_relaxed) &&
                !each.isTaken.exchange(true, std::memory_order_acq_rel)) {
                ofThread = &each;
                return;
            }
        }
    }

    ~Claim()
    {
        if (ofThread)
            std::exchange(ofThread, nullptr)->isTaken.store(false, std::memory_order_release);
    }

    Q_DISABLE_COPY(Claim)

    // Needs no construction and no destruction, so that looking at it costs nothing and is always possible.
    static thread_local Slot* ofThread;
};

thread_local HazardGuard::Slot* HazardGuard::Claim::ofThread = nullptr;

HazardGuard::Slot* HazardGuard::slotOfThread()
{
    static thread_local bool hasClaimed = false;
    if (!hasClaimed) {
        hasClaimed = true;
        static thread_local const Claim claim;
    }
    return Claim::ofThread;
}

HazardGuard::HazardGuard(HazardGuard&& other) noexcept : slot(std::exchange(other.slot, nullptr))
{
}

HazardGuard::~HazardGuard()
{
    if (slot)
        slot->end();
}

bool HazardGuard::begin(std::uint64_t pathHash)
{
    Slot* const own = slotOfThread();
    if (!own || own->held.load(std::memory_order_relaxed) != 0)
        return false;
    own->held.store(heldPath(pathHash), std::memory_order_release);
    slot = own;
    return true;
}

// What the attribute lock orders need not be ordered again: a thread that has found the registration in its
// list has noted the path before it was taken out.
void HazardGuard::retire(std::uint64_t pathHash, RegistrationPointer registration)
{
    if (!registration)
        return;
    const std::uint64_t path = heldPath(pathHash);
    for (Slot& other : Slot::all) {
        if ((other.held.load(std::memory_order_acquire) & ~hasLeftOnes) == path)
            other.leave(path, registration);
    }
}

} // namespace Repository
