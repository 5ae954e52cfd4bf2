#include "host/Utilities/ModelViews/dialogs/AttributeNameCheck.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace Utilities::ModelViews::Widgets {

namespace {

constexpr QLatin1Char separator('.');

QString translated(const char* text)
{
    return QCoreApplication::translate("AttributeNameCheck", text);
}

} // namespace

QString attributeNameFault(const QString& name)
{
    if (name.isEmpty())
        return translated("The name is empty.");
    if (name.contains(QLatin1Char('*')))
        return translated("\"*\" stands for any text in searches; it cannot be part of a name.");
    if (name.startsWith(separator))
        return translated("The name begins with \".\", with no name before it.");
    if (name.endsWith(separator))
        return translated("The name ends with \".\", with no name after it.");
    if (name.contains(QLatin1String("..")))
        return translated("There is no name between \"..\".");
    if (name.contains(QLatin1Char(';')))
        return translated("\";\" cannot be part of a name; write \"%3B\" for it.");
    static const QRegularExpression noCode(QStringLiteral("%(?![0-9A-F]{2})"));
    if (name.contains(noCode))
        return translated("\"%\" begins a code, as in \"%3B\" for \";\"; write \"%25\" for \"%\" itself.");
    const auto isControl = [](QChar character) { return character.category() == QChar::Other_Control; };
    if (std::any_of(name.begin(), name.end(), isControl))
        return translated("The name holds a line end, a tab or another character without a sign.");
    return {};
}

} // namespace Utilities::ModelViews::Widgets
