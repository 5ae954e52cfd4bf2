#include "repository/store/NodePages.h"

#include <atomic>
#include <cstring>
#include <new>

namespace Repository {

namespace {

constexpr std::size_t alignment = alignof(void*);
constexpr std::size_t pageSize = 32768 - 2 * sizeof(void*); // with the allocator's bytes a whole number
constexpr std::size_t largestBlock = pageSize / 32;

using Offset = quint16; // of a block in its page, right before the block

constexpr std::size_t aligned(std::size_t bytes)
{
    return (bytes + alignment - 1) / alignment * alignment;
}

} // namespace

// What a page begins with.
struct NodePages::Page
{
    std::atomic<quint32> users{1};

    void leave() noexcept
    {
        if (users.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            this->~Page();
            ::operator delete(this);
        }
    }
};

void* NodePages::take(std::size_t size)
{
    if (size > largestBlock)
        return nullptr;
    std::size_t offset = aligned(used + sizeof(Offset));
    if (!page || offset + size > pageSize) {
        auto* const fresh = ::new (::operator new(pageSize)) Page;
        leavePage();
        page = fresh;
        offset = aligned(sizeof(Page) + sizeof(Offset));
    }
    char* const block = reinterpret_cast<char*>(page) + offset;
    const auto stored = Offset(offset);
    std::memcpy(block - sizeof stored, &stored, sizeof stored);
    used = offset + size;
    page->users.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void NodePages::release(void* block) noexcept
{
    Offset offset = 0;
    std::memcpy(&offset, static_cast<char*>(block) - sizeof offset, sizeof offset);
    reinterpret_cast<Page*>(static_cast<char*>(block) - offset)->leave();
}

void NodePages::leavePage() noexcept
{
    if (page)
        page->leave();
    page = nullptr;
}

} // namespace Repository
