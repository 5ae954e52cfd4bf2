#pragma once

#include <QtGlobal>

namespace FrameworkCore::AppConfig {

// What a caller may do with an attribute or a backend; 2 and 3 mean writable, 1 and 3 readable.
enum class AccessMode : quint8 { None = 0, ReadOnly = 1, WriteOnly = 2, ReadWrite = 3 };

constexpr bool isReadable(AccessMode mode)
{
    return (static_cast<quint8>(mode) & 1U) != 0;
}
constexpr bool isWritable(AccessMode mode)
{
    return (static_cast<quint8>(mode) & 2U) != 0;
}

} // namespace FrameworkCore::AppConfig
