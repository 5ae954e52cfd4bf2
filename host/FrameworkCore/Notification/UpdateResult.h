#pragma once

namespace FrameworkCore::Notification {

// What an operation did to the attribute that a callback is told about.
enum class UpdateResult : int { Unchanged, Changed, Created, Removed, Reloaded };

} // namespace FrameworkCore::Notification
