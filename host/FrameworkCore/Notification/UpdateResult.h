#pragma once

namespace FrameworkCore::Notification {

// What an operation did to the attribute that a callback is about. Reordered is reported for one attribute
// for all of a group, at a point of its own: the siblings of it, or of a group that it lies in, have another
// order.
enum class UpdateResult : int { Unchanged, Changed, Created, Removed, Reloaded, Reordered };

} // namespace FrameworkCore::Notification
