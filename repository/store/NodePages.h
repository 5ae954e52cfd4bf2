#pragma once

#include <QtGlobal>

#include <cstddef>

namespace Repository {

// Memory for nodes that are made by the thousand, and for their texts, which spares each the allocator's own
// bytes. A page is freed with the last that lies in it. Taking: one thread at a time; releasing: any thread.
class NodePages
{
public:
    NodePages() = default;
    ~NodePages() { leavePage(); }
    Q_DISABLE_COPY(NodePages)

    // Aligned for pointers; null for more than a page is meant for. Throws std::bad_alloc.
    void* take(std::size_t size);

    // What was taken; the pages may be gone.
    static void release(void* block) noexcept;

private:
    struct Page;

    void leavePage() noexcept;

    Page* page = nullptr; // the one to take from; it is freed by its last user, of whom this is one
    std::size_t used = 0; // bytes of it
};

} // namespace Repository
