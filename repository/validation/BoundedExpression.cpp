#include "repository/validation/BoundedExpression.h"

#include "repository/common/Texts.h"

#include <algorithm>
#include <limits>

namespace Repository {

namespace {

// A step of the engine may pass over all of the text, so that longer texts get fewer steps.
constexpr qint64 mostCharacters = 4'000'000'000; // that are passed over, in all steps together
constexpr qint64 shortest = 2048;
constexpr int mostKilobytes = 131'072;

QString filledIn(const QString& replacement, const QRegularExpressionMatch& match)
{
    QString text;
    for (int i = 0; i < replacement.size(); ++i) {
        const QChar next = i + 1 < replacement.size() ? replacement[i + 1] : QChar();
        const bool isReference =
            replacement[i] == QLatin1Char('\\') && next >= QLatin1Char('0') && next <= QLatin1Char('9');
        const bool isBackslash = replacement[i] == QLatin1Char('\\') && next == QLatin1Char('\\');
        if (isReference)
            text += match.capturedRef(next.digitValue());
        else
            text += replacement[i];
        i += isReference || isBackslash ? 1 : 0;
    }
    return text;
}

} // namespace

// The compiler of the engine makes code that counts no steps while it passes over repeated parts, and that
// gives up when a small stack of its own is full; the interpreter does neither.
BoundedExpression::BoundedExpression(const QString& pattern, Scope scope,
                                     QRegularExpression::PatternOptions options)
    : plain(pattern, options)
{
    const QString scoped = scope == Scope::WholeText ? QRegularExpression::anchoredPattern(pattern) : pattern;
    for (qint64 longest = shortest; longest / 2 < std::numeric_limits<int>::max(); longest *= 2) {
        const QString bounds = QStringLiteral("(*NO_JIT)(*LIMIT_MATCH=%1)(*LIMIT_HEAP=%2)")
                                   .arg(mostCharacters / longest)
                                   .arg(mostKilobytes);
        byLength.push_back({longest, QRegularExpression(bounds + scoped, options)});
    }
}

QString BoundedExpression::getError() const
{
    return Texts::tr("%1 at offset %2").arg(faulty().errorString()).arg(getErrorOffset());
}

// An expression may be valid by itself, and not within bounds or anchors.
const QRegularExpression& BoundedExpression::faulty() const
{
    return plain.isValid() ? byLength.front().expression : plain;
}

const QRegularExpression& BoundedExpression::expressionFor(qint64 length) const
{
    return std::find_if(byLength.begin(), byLength.end(),
                        [length](const Bounded& bounded) { return length <= bounded.longest; })
        ->expression;
}

std::optional<bool> BoundedExpression::matches(const QStringRef& text) const
{
    if (!QStringView(text).isValidUtf16())
        return false;
    const QRegularExpressionMatch match = expressionFor(text.size()).match(text);
    return match.isValid() ? std::optional(match.hasMatch()) : std::nullopt;
}

std::optional<QString> BoundedExpression::replaced(const QString& text, const QString& replacement) const
{
    if (!text.isValidUtf16())
        return text;
    QString result;
    int end = 0; // of the last match
    QRegularExpressionMatchIterator matches = expressionFor(text.size()).globalMatch(text);
    while (matches.isValid() && matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += text.midRef(end, match.capturedStart() - end);
        result += filledIn(replacement, match);
        end = match.capturedEnd();
    }
    if (!matches.isValid())
        return {};
    result += text.midRef(end);
    return result;
}

} // namespace Repository
