#include "host/FrameworkCore/AppConfig/Outcome.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <QCoreApplication>

namespace FrameworkCore::AppConfig {

namespace {

// What is translated here; a free tr() would be listed under another name than it is looked up by.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(FrameworkCore::AppConfig::Outcome)
};

constexpr int mostShown = 80;

// "%1" is the subject, "%2" the argument, or of what was not set, the value.
QString phraseOf(Outcome::Operation operation, bool hasValue)
{
    switch (operation) {
    case Outcome::Operation::None:
        return {};
    case Outcome::Operation::Set:
        return hasValue ? Texts::tr("'%1' was not set to %2") : Texts::tr("'%1' was not set");
    case Outcome::Operation::Change:
        return Texts::tr("'%1' was left as it is");
    case Outcome::Operation::AddValidation:
        return Texts::tr("'%1' was not given the validation '%2'");
    case Outcome::Operation::CreateBackend:
        return Texts::tr("The backend '%1' was not created");
    case Outcome::Operation::SaveBackend:
        return Texts::tr("The backend '%1' was not saved");
    case Outcome::Operation::ReloadBackend:
        return Texts::tr("The backend '%1' was not reloaded");
    case Outcome::Operation::CloseBackend:
        return Texts::tr("The backend '%1' was not closed");
    case Outcome::Operation::FollowFile:
        return Texts::tr("The file of the backend '%1' has changed");
    case Outcome::Operation::ListChanges:
        return Texts::tr("The changes of the backend '%1' were not listed");
    case Outcome::Operation::ShowChanges:
        return Texts::tr("The changes of the backend '%1' were not shown");
    case Outcome::Operation::Revert:
        return Texts::tr("'%1' was not reverted");
    case Outcome::Operation::Resolve:
        return Texts::tr("The conflict at '%1' was not resolved");
    case Outcome::Operation::Undo:
        return Texts::tr("'%1' was not undone");
    case Outcome::Operation::Redo:
        return Texts::tr("'%1' was not done again");
    case Outcome::Operation::Match:
        return Texts::tr("'%1' was not matched");
    case Outcome::Operation::Locate:
        return Texts::tr("'%1' has no place in a text");
    case Outcome::Operation::Lock:
        return Texts::tr("The backend '%1' was not locked");
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
    const QString phrase = phraseOf(get().operation, get().value.has_value());
    if (phrase.isEmpty())
        return phrase;
    if (!phrase.contains(QLatin1String("%2")))
        return phrase.arg(pathText(get().subject));
    return phrase.arg(pathText(get().subject), get().value ? shownValue(*get().value) : get().argument);
}

QString Outcome::explain(const PathText& pathText) const
{
    QStringList places;
    for (const Detail& detail : get().details) {
        if (detail.path == get().subject && detail.text.isEmpty())
            continue; // said already
        places.append(Texts::tr("'%1'").arg(pathText(detail.path)) +
                      (detail.text.isEmpty() ? QString() : QLatin1Char(' ') + detail.text));
    }
    QString text = joined(get().reason, ": ", places.join(QStringLiteral(", ")));
    if (get().detailsLeftOut > 0)
        text += Texts::tr(" and %1 more").arg(get().detailsLeftOut);
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
    return toText(shownPath);
}

QString Outcome::toText(const PathText& pathText) const
{
    return joined(describe(pathText), ": ", joined(place(get().file), ": ", explain(pathText)));
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
        return Texts::tr("a value of the type %1").arg(QLatin1String(value.typeName()));
    const auto typed = Values::toValue(*attributeValue);
    QString kind = Values::typeText(typed.type);
    if (typed.type == Values::Type::Null)
        return kind;
    const QString text = typed.type == Values::Type::String ? attributeValue->toString()
                                                            : QString::fromStdString(Values::toText(typed));
    if (text.size() > mostShown)
        kind += Texts::tr(", %1 characters long").arg(text.size());
    return Texts::tr("'%1' (%2)").arg(shortened(text), kind);
}

} // namespace FrameworkCore::AppConfig
