#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>

namespace FrameworkCore::AppConfig {

// A path in which "*" stands for any run of characters, separators included; everything else stands for
// itself. A value; any thread.
class VANTRY_CORE_EXPORT PathPattern
{
public:
    explicit PathPattern(const QString& pattern, Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);

    bool hasWildcard() const { return literals.size() > 1; }
    bool matches(QStringView path) const;

    // The runs of text between the wildcards, in order; the first and the last are empty where the pattern
    // begins or ends with "*". Without a wildcard it is the whole pattern.
    const QStringList& getLiterals() const { return literals; }

private:
    QStringList literals;
    Qt::CaseSensitivity caseSensitivity;
};

} // namespace FrameworkCore::AppConfig
