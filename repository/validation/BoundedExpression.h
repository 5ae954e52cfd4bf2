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
    explicit BoundedExpression(const QString& pattern);

    bool isValid() const { return byLength.front().expression.isValid(); }
    QString getError() const { return byLength.front().expression.errorString(); }

    // Whether it matches the text from its beginning to its end; nothing when that was not found out within
    // the bounds.
    std::optional<bool> matchesWhole(const QString& text) const;

private:
    // The engine takes its bounds from the pattern.
    struct Bounded
    {
        qint64 longest; // text, in characters
        QRegularExpression expression;
    };

    std::vector<Bounded> byLength;
};

} // namespace Repository
