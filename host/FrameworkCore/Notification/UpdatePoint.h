#pragma once

namespace FrameworkCore::Notification {

// The moments of one write. Numbers that select several moments are sums of these.
// All points of a successful operation are delivered after it, in ascending order; a refused one delivers
// none.
enum class UpdatePoint : int { BeforeValidation = 1, AfterValidation = 2, BeforeStore = 4, AfterStore = 8 };

} // namespace FrameworkCore::Notification
