#pragma once

#include <QRegularExpression>
#include <QString>

#include <optional>
#include <vector>

namespace Repository {

// A regular expression whose matching ends after a bounded time and with bounded memory, whatever the
// expression and the text are. Immutable; any thread.
class BoundedExpression
{
public:
    enum class Scope { WholeText, AnyPart };

    explicit BoundedExpression(const QString& pattern, Scope scope = Scope::WholeText,
                               QRegularExpression::PatternOptions options = {});

    bool isValid() const { return faulty().isValid(); }
    QString getError() const;                                                               // says where, too
    int getErrorOffset() const { return plain.isValid() ? 0 : plain.patternErrorOffset(); } // in characters

    // Whether it matches the text from its beginning to its end, or any part of it; nothing when that was not
    // found out within the bounds. A text that is not Unicode does not match.
    std::optional<bool> matches(const QStringRef& text) const;
    std::optional<bool> matches(const QString& text) const { return matches(QStringRef(&text)); }

    // The text with another one in place of each match, in which "\1" to "\9" stand for what groups have
    // matched, "\0" for all, and "\\" for a backslash; nothing when that was not found out within the bounds.
    std::optional<QString> replaced(const QString& text, const QString& replacement) const;

private:
    // The engine takes its bounds from the pattern.
    struct Bounded
    {
        qint64 longest; // text, in characters
        QRegularExpression expression;
    };

    const QRegularExpression& faulty() const; // if one is
    const QRegularExpression& expressionFor(qint64 length) const;

    QRegularExpression plain;
    std::vector<Bounded> byLength;
};

} // namespace Repository
