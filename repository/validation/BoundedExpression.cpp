#include "repository/validation/BoundedExpression.h"

#include <algorithm>
#include <limits>

namespace Repository {

// A step of the engine may pass over all of the text, so that longer texts get fewer steps.
constexpr qint64 mostCharacters = 4'000'000'000; // that are passed over, in all steps together
constexpr qint64 shortest = 2048;
constexpr int mostKilobytes = 131'072;

// The compiler of the engine makes code that counts no steps while it passes over repeated parts, and that
// gives up when a small stack of its own is full; the interpreter does neither.
BoundedExpression::BoundedExpression(const QString& pattern)
{
    const QString whole = QRegularExpression::anchoredPattern(pattern);
    for (qint64 longest = shortest; longest / 2 < std::numeric_limits<int>::max(); longest *= 2) {
        const QString bounds = QStringLiteral("(*NO_JIT)(*LIMIT_MATCH=%1)(*LIMIT_HEAP=%2)")
                                   .arg(mostCharacters / longest)
                                   .arg(mostKilobytes);
        byLength.push_back({longest, QRegularExpression(bounds + whole)});
    }
}

std::optional<bool> BoundedExpression::matchesWhole(const QString& text) const
{
    if (!text.isValidUtf16())
        return false;
    const auto fitting = std::find_if(byLength.begin(), byLength.end(), [&text](const Bounded& bounded) {
        return text.size() <= bounded.longest;
    });
    const QRegularExpressionMatch match = fitting->expression.match(text);
    return match.isValid() ? std::optional(match.hasMatch()) : std::nullopt;
}

} // namespace Repository
