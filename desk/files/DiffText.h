#pragma once

#include <QString>

namespace Vantry {

// As much of a unified diff as a person looks through: at most so many lines, and of two versions of a very
// long line what is around their first difference. Any thread.
class DiffText
{
public:
    static constexpr int mostLines = 2000;
    static constexpr int longestLine = 400; // in characters

    static QString shortened(const QString& diff);
};

} // namespace Vantry
