#pragma once

namespace FrameworkCore::Notification {

// The moments of one write. Numbers that select several moments are sums of these.
// All points of a successful operation are delivered after it, in ascending order; a refused one delivers
// none. AfterReorder is not part of a write: something has moved in the tree without any change of values.
enum class UpdatePoint : int {
    BeforeValidation = 1,
    AfterValidation = 2,
    BeforeStore = 4,
    AfterStore = 8,
    AfterReorder = 16
};

} // namespace FrameworkCore::Notification
