#include "host/FrameworkCore/AppConfig/Outcome.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

namespace FrameworkCore::AppConfig {

namespace {

constexpr int mostShown = 80;

// "%1" is the subject, "%2" the argument.
QString phraseOf(Outcome::Operation operation)
{
    switch (operation) {
    case Outcome::Operation::None:
        return {};
    case Outcome::Operation::Set:
        return QStringLiteral("'%1' was not set");
    case Outcome::Operation::Change:
        return QStringLiteral("'%1' was left as it is");
    case Outcome::Operation::AddValidation:
        return QStringLiteral("'%1' was not given the validation '%2'");
    case Outcome::Operation::CreateBackend:
        return QStringLiteral("The backend '%1' was not created");
    case Outcome::Operation::SaveBackend:
        return QStringLiteral("The backend '%1' was not saved");
    case Outcome::Operation::ReloadBackend:
        return QStringLiteral("The backend '%1' was not reloaded");
    case Outcome::Operation::CloseBackend:
        return QStringLiteral("The backend '%1' was not closed");
    case Outcome::Operation::FollowFile:
        return QStringLiteral("The file of the backend '%1' has changed");
    case Outcome::Operation::ListChanges:
        return QStringLiteral("The changes of the backend '%1' were not listed");
    case Outcome::Operation::ShowChanges:
        return QStringLiteral("The changes of the backend '%1' were not shown");
    case Outcome::Operation::Revert:
        return QStringLiteral("'%1' was not reverted");
    case Outcome::Operation::Resolve:
        return QStringLiteral("The conflict at '%1' was not resolved");
    case Outcome::Operation::Undo:
        return QStringLiteral("'%1' was not undone");
    case Outcome::Operation::Redo:
        return QStringLiteral("'%1' was not done again");
    case Outcome::Operation::Match:
        return QStringLiteral("'%1' was not matched");
    case Outcome::Operation::Locate:
        return QStringLiteral("'%1' has no place in a text");
    case Outcome::Operation::Lock:
        return QStringLiteral("The backend '%1' was not locked");
    }
    return {};
}

// Each text that is there after the separator.
QString joined(const QString& text, const char* separator, const QString& next)
{
    return text.isEmpty() || next.isEmpty() ? text + next : text + QLatin1String(separator) + next;
}

} // namespace

const Outcome::Parts& Outcome::none()
{
    static const Parts parts;
    return parts;
}

Outcome::Parts& Outcome::change()
{
    if (!parts)
        parts = new Parts;
    return *parts;
}

Outcome& Outcome::of(Operation operation, const QString& subject)
{
    if (!ok() && get().operation == Operation::None) {
        change().operation = operation;
        change().subject = subject;
    }
    return *this;
}

Outcome& Outcome::in(const QString& file, int line, int column)
{
    if (get().file.isEmpty()) {
        Parts& changed = change();
        changed.file = file;
        changed.line = line;
        changed.column = column;
    }
    return *this;
}

Outcome& Outcome::advise(const QString& advice)
{
    change().advice = advice;
    return *this;
}

QString Outcome::describe(const PathText& pathText) const
{
    QString phrase = phraseOf(get().operation);
    if (phrase.isEmpty())
        return phrase;
    phrase = get().argument.isEmpty() ? phrase.arg(pathText(get().subject))
                                      : phrase.arg(pathText(get().subject), get().argument);
    if (get().value)
        phrase += QStringLiteral(" to ") + shownValue(*get().value);
    return phrase;
}

QString Outcome::explain(const PathText& pathText) const
{
    QStringList places;
    for (const Detail& detail : get().details) {
        if (detail.path == get().subject && detail.text.isEmpty())
            continue; // said already
        places.append(QLatin1Char('\'') + pathText(detail.path) + QLatin1Char('\'') +
                      (detail.text.isEmpty() ? QString() : QLatin1Char(' ') + detail.text));
    }
    QString text = joined(get().reason, ": ", places.join(QStringLiteral(", ")));
    if (get().detailsLeftOut > 0)
        text += QStringLiteral(" and %1 more").arg(get().detailsLeftOut);
    return joined(text, "; ", get().advice);
}

QString Outcome::place(const QString& fileName) const
{
    if (get().file.isEmpty())
        return {};
    return get().line == 0 ? fileName
                           : QStringLiteral("%1:%2:%3").arg(fileName).arg(get().line).arg(get().column);
}

QString Outcome::toText() const
{
    return joined(describe(), ": ", joined(place(get().file), ": ", explain()));
}

QString Outcome::shortened(const QString& text)
{
    constexpr int ending = 15;
    QString line = text;
    if (text.size() > mostShown)
        line = text.left(mostShown - ending) + QStringLiteral("...") + text.right(ending);
    line.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    line.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    line.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return line;
}

QString Outcome::shownPath(const QString& path)
{
    constexpr int most = 1000;
    constexpr int end = 100;
    return path.size() <= most ? path : path.left(end) + QStringLiteral("...") + path.right(end);
}

QString Outcome::shownValue(const QVariant& value)
{
    const auto attributeValue = Values::toAttributeVariant(value);
    if (!attributeValue)
        return QStringLiteral("a value of the type %1").arg(QLatin1String(value.typeName()));
    const auto typed = Values::toValue(*attributeValue);
    QString kind = QString::fromStdString(Values::describeType(typed.type));
    if (typed.type == Values::Type::Null)
        return kind;
    const QString text = typed.type == Values::Type::String ? attributeValue->toString()
                                                            : QString::fromStdString(Values::toText(typed));
    if (text.size() > mostShown)
        kind += QStringLiteral(", %1 characters long").arg(text.size());
    return QStringLiteral("'%1' (%2)").arg(shortened(text), kind);
}

} // namespace FrameworkCore::AppConfig
