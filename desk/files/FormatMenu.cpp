#include "desk/files/FormatMenu.h"

#include "desk/common/MenuText.h"
#include "repository/documents/Formats.h"
#include "repository/documents/dialects/Dialects.h"

#include <string_view>

namespace Vantry {

namespace {

QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

// "a git configuration" at the beginning of a line.
QString titleOf(const Repository::Documents::Dialect& dialect)
{
    const QString title = toText(dialect.title);
    return title.mid(title.indexOf(QLatin1Char(' ')) + 1);
}

} // namespace

FormatMenu::FormatMenu(const QString& title, QWidget* parent) : QMenu(title, parent)
{
    const auto& formats = Repository::Documents::getDocumentTypes();
    for (const std::string& format : formats) {
        const QString name = QString::fromStdString(format);
        const bool hasDialects = Repository::Documents::findDialect(format, "generic");
        addType(hasDialects ? tr("%1 file, its dialect recognised").arg(name) : tr("%1 file").arg(name),
                name);
    }
    for (const std::string& format : formats) {
        addSeparator();
        for (const Repository::Documents::Dialect& dialect : Repository::Documents::getDialects()) {
            if (dialect.format == format)
                addType(titleOf(dialect),
                        QStringLiteral("%1:%2").arg(toText(dialect.format), toText(dialect.name)));
        }
    }
}

// The type is in the column of the keys.
void FormatMenu::addType(const QString& text, const QString& type)
{
    addAction(menuText(text) + QLatin1Char('\t') + type, this, [this, type] { emit chosen(type); });
}

} // namespace Vantry
