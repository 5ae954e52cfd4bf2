#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>

#include <optional>

namespace FrameworkCore::AppConfig {

// A place in a file, as compilers and editors write it. A value type.
struct VANTRY_CORE_EXPORT FilePosition
{
    QString file;
    int line = 0;   // from 1
    int column = 0; // from 1, in characters

    // "FILE:LINE:COLUMN".
    QString toText() const;

    // The same, or "FILE:LINE" for its first column; a colon and what follows it, as the line itself, do not
    // count. Nothing for any other text.
    static std::optional<FilePosition> parse(const QString& text);
};

} // namespace FrameworkCore::AppConfig
