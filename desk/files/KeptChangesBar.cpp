#include "desk/files/KeptChangesBar.h"

#include "desk/common/Confirmation.h"
#include "desk/files/DiffText.h"
#include "desk/files/DiffView.h"
#include "desk/files/FileNames.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QDialogButtonBox>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

namespace Vantry {

using namespace Utilities::ModelViews::Widgets;
using Utilities::ModelViews::toolTipText;

namespace {

QString fileOf(const KeptChanges::Entry& entry)
{
    return entry.file.isEmpty() ? entry.diffFile : entry.file;
}

// As distinctFileNames; several entries of one file share its name.
QStringList namesOf(const QVector<KeptChanges::Entry>& entries)
{
    QStringList files;
    for (const KeptChanges::Entry& entry : entries)
        files.append(fileOf(entry));
    QStringList once = files;
    once.removeDuplicates();
    const QStringList distinct = distinctFileNames(once);
    QStringList names;
    for (const QString& file : qAsConst(files))
        names.append(distinct[once.indexOf(file)]);
    return names;
}

} // namespace

void KeptChangesBar::setUp()
{
    auto* const content = new QWidget;
    rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    QToolButton* const close = setContent(content);
    close->setObjectName(QStringLiteral("keptClose"));
    close->setText(tr("Later"));
    close->setToolTip(tr("Ask again at the next start"));
    close->setAccessibleName(close->text());
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
}

void KeptChangesBar::refresh()
{
    const auto entries = KeptChanges::getEntries();
    setVisible(!entries.isEmpty());
    if (!entries.isEmpty() && !rows)
        setUp();
    while (QLayoutItem* const item = rows ? rows->takeAt(0) : nullptr) {
        item->widget()->deleteLater(); // it may be the one whose button was pressed
        item->widget()->hide();
        delete item;
    }
    const QStringList names = namesOf(entries);
    for (int number = 0; number < entries.size(); ++number)
        rows->addWidget(makeRow(entries[number], names[number]));
    if (entries.isEmpty())
        return;
    constexpr int mostRows = 4;
    const int rowHeight = rows->itemAt(0)->widget()->sizeHint().height() + rows->spacing();
    scroller->setFixedHeight(rowHeight * qMin(entries.size(), mostRows) + rowHeight / 4);
}

QWidget* KeptChangesBar::makeRow(const KeptChanges::Entry& entry, const QString& name)
{
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeWarningIcon());
    auto* const text = new PlainLabel(tr("Unsaved changes of %1 are kept from %2")
                                          .arg(name, QLocale().toString(entry.time, QLocale::ShortFormat)));
    text->setObjectName(QStringLiteral("keptText"));
    text->setToolTip(
        toolTipText(tr("%1\nThe program was told to end before they were saved").arg(fileOf(entry))));
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(text, 1);

    const auto addButton = [&](const QString& title, const char* objectName) {
        auto* const button = new QPushButton(title);
        button->setObjectName(QLatin1String(objectName));
        button->setAccessibleDescription(text->text());
        layout->addWidget(button);
        return button;
    };
    connect(addButton(tr("Show"), "keptShow"), &QPushButton::clicked, this,
            [this, entry] { showDiff(entry); });
    QPushButton* const apply = addButton(tr("Apply Again"), "keptApply");
    apply->setEnabled(!entry.file.isEmpty());
    connect(apply, &QPushButton::clicked, this, [this, entry] { emit applyRequested(entry); });
    connect(addButton(tr("Discard"), "keptDiscard"), &QPushButton::clicked, this,
            [this, entry, name] { discard(entry, name); });
    return row;
}

void KeptChangesBar::showDiff(const KeptChanges::Entry& entry)
{
    QString error;
    const QString diff = KeptChanges::readDiff(entry, error);
    QDialog dialog(window());
    dialog.setObjectName(QStringLiteral("keptDiff"));
    dialog.setWindowTitle(tr("Kept Changes"));
    dialog.resize(720, 480);
    auto* const view = new DiffView;
    view->setPlainText(error.isEmpty() ? DiffText::shortened(diff) : error);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(view, 1);
    column->addWidget(buttons);
    dialog.exec();
}

void KeptChangesBar::discard(const KeptChanges::Entry& entry, const QString& name)
{
    const QString question = tr("Discard the kept changes of %1?").arg(breakableText(name));
    if (!Confirmation(Confirmation::Act::DiscardKept, tr("Discard"), question, window()).ask(tr("&Discard")))
        return;
    const QString error = KeptChanges::replace(entry, {});
    if (!error.isEmpty())
        AttributeTreeModelInputDialogs::ShowWarningMessage(window(), tr("Not Discarded"), error);
    refresh();
}

} // namespace Vantry
