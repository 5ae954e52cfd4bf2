#include "widgets/AttributeDetails.h"

#include "widgets/PageWindow.h"
#include "widgets/ReadableValue.h"
#include "widgets/ValueWindow.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QLocale>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QUrl>

namespace Widgets {

namespace {

const QLatin1String showLink("#show");
const QLatin1String copyLink("#copy");

QTextCharFormat linkFormat(const QPalette& palette, const QString& link)
{
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorHref(link);
    format.setForeground(palette.link());
    format.setFontUnderline(true);
    return format;
}

// How much there is of a value, whose text is given.
QString amountOf(const QVariant& value, const QString& text)
{
    const QLocale locale;
    if (value.type() == QVariant::ByteArray)
        return AttributeDetails::tr("%1 bytes").arg(locale.toString(value.toByteArray().size()));
    if (value.type() == QVariant::StringList)
        return AttributeDetails::tr("%1 items").arg(locale.toString(value.toStringList().size()));
    return AttributeDetails::tr("%1 characters").arg(locale.toString(text.size()));
}

} // namespace

AttributeDetails::AttributeDetails(QTextBrowser& browser) : QObject(&browser), panel(browser)
{
    panel.setOpenLinks(false);
    panel.installEventFilter(this);
    connect(&panel, &QTextBrowser::anchorClicked, this, &AttributeDetails::followLink);
}

void AttributeDetails::showAttribute(const QString& name, const QString& path, const QVariant& value,
                                     const QStringList& validations)
{
    const QString text = readableText(leadingText(value));
    const QString beginning = beginningOf(text);
    const bool isWhole = beginning.size() == text.size();
    const bool isSameAttribute = path == shownPath;
    const int scrolled = panel.verticalScrollBar()->value();
    shownPath = path;
    shownValue = value;
    QStringList paragraphs{QLatin1String("Name : ") + beginningOf(name),
                           QLatin1String("Path : ") + beginningOf(path),
                           QLatin1String("Data Type : ") + QLatin1String(value.typeName()),
                           QLatin1String("Value : ") + beginning};
    if (!validations.isEmpty())
        paragraphs.append(QLatin1String("Validations : ") +
                          beginningOf(validations.join(QLatin1String(", "))));
    show(paragraphs, isWhole ? QString() : amountOf(value, text));
    if (isSameAttribute)
        panel.verticalScrollBar()->setValue(scrolled);
}

void AttributeDetails::showBackend(const QString& name, const QString& type, const QString& description)
{
    shownPath.clear();
    shownValue.clear();
    show({QLatin1String("Backend Name : ") + beginningOf(name), QLatin1String("Backend Type : ") + type,
          QLatin1String("Backend Description : ") + beginningOf(description)});
}

void AttributeDetails::clear()
{
    shownPath.clear();
    shownValue.clear();
    shownText.clear();
    panel.clear();
}

void AttributeDetails::show(const QStringList& paragraphs, const QString& wholeAmount)
{
    const QString text = paragraphs.join(QLatin1Char('\n')) + wholeAmount;
    if (text == shownText)
        return; // what the person has selected in it stays
    shownText = text;
    panel.clear();
    if (!wholeAmount.isEmpty())
        insertNote(wholeAmount);
    // Inserted as it is: QTextEdit::append would take a value that looks like HTML for markup.
    QTextCursor cursor(panel.document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(paragraphs.join(QLatin1Char('\n')), QTextCharFormat());
}

// Before all else, where it is seen however long what follows is.
void AttributeDetails::insertNote(const QString& wholeAmount)
{
    const QString gap = QString::fromLatin1("   ");
    QTextCursor cursor(panel.document());
    cursor.insertText(tr("Only the beginning of the value is shown; it has %1.").arg(wholeAmount));
    cursor.insertText(gap, QTextCharFormat());
    cursor.insertText(tr("Show All"), linkFormat(panel.palette(), showLink));
    cursor.insertText(gap, QTextCharFormat());
    cursor.insertText(tr("Copy Value"), linkFormat(panel.palette(), copyLink));
    cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
}

bool AttributeDetails::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        colourLinks();
    return QObject::eventFilter(watched, event);
}

// They are in the first line, and keep the colour that they were inserted with.
void AttributeDetails::colourLinks()
{
    const QTextBlock first = panel.document()->begin();
    QTextCursor cursor(first);
    for (auto part = first.begin(); !part.atEnd(); ++part) {
        const QTextFragment fragment = part.fragment();
        if (!fragment.charFormat().isAnchor())
            continue;
        cursor.setPosition(fragment.position());
        cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(linkFormat(panel.palette(), fragment.charFormat().anchorHref()));
    }
}

void AttributeDetails::followLink(const QUrl& link)
{
    if (link.toString() == copyLink) {
        QGuiApplication::clipboard()->setText(valueText(shownValue));
        return;
    }
    const QString text = valueText(shownValue);
    auto* const window = new ValueWindow(shownPath, readableText(text), text);
    window->setAttribute(Qt::WA_DeleteOnClose);
    deleteWith(panel, *window);
    window->show();
}

} // namespace Widgets
