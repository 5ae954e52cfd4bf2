#pragma once

#include "host/FrameworkCore/Values/VariantText.h"

#include <QString>
#include <QStringList>

#include <string_view>

namespace Fuzz {

// UTF-8, with a replacement for each byte that is not.
inline QString textOf(std::string_view bytes)
{
    return FrameworkCore::Values::decodeUtf8(bytes);
}

// At most so many of the lines; what follows them is ignored.
inline QStringList linesOf(std::string_view bytes, int most)
{
    return textOf(bytes).split(QLatin1Char('\n')).mid(0, most);
}

} // namespace Fuzz
