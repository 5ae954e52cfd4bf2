#include "desk/files/ConflictDialog.h"

#include "desk/files/DifferenceDelegate.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::toolTipText;
using Utilities::ModelViews::Widgets::breakableText;
using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

enum Column { PathColumn, MineColumn, TheirsColumn, ChoiceColumn };

constexpr int pathRole = Qt::UserRole;   // of the first column
constexpr int choiceRole = Qt::UserRole; // of the last: a ConflictSide as a number; nothing while not chosen

// What one side holds.
QString sideText(const QVariant& value, bool isThere)
{
    if (!isThere)
        return ConflictDialog::tr("(not there)");
    constexpr int longest = 1000000; // two may differ at their ends only
    return value.isValid() ? Utilities::ModelViews::attributeValueLines(value, longest, longest)
                           : ConflictDialog::tr("(not shown)");
}

} // namespace

ConflictDialog::ConflictDialog(Purpose purpose, const QString& backend, const QString& label,
                               const QVector<UnsavedChange>& conflicts, QWidget* parent)
    : QDialog(parent), rows(new QTreeWidget), mine(new QPushButton(tr("Keep &Mine"))),
      theirs(new QPushButton(tr("Take &Theirs")))
{
    setObjectName(QStringLiteral("conflicts"));
    const bool isSave = purpose == Purpose::Save;
    setWindowTitle(isSave ? tr("Changed by Another Program") : tr("Changed since Then"));
    resize(720, 360);
    auto* const column = new QVBoxLayout(this);
    auto* const text = new PlainLabel(
        (isSave ? tr("%1 was not saved: another program has changed what was edited here. Choose for each "
                     "attribute whose value is to stay; all others are merged.")
                : tr("%1 has been changed since the kept changes were made. Choose for each attribute whose "
                     "value is to stay; all others are applied."))
            .arg(breakableText(label)));
    text->setWordWrap(true);
    column->addWidget(text);

    setUpRows(isSave ? tr("Theirs") : tr("Now"));
    addRows(backend, conflicts);
    column->addWidget(rows, 1);

    auto* const sides = new QHBoxLayout;
    sides->addWidget(new PlainLabel(tr("For the selected rows:")));
    sides->addWidget(mine);
    sides->addWidget(theirs);
    sides->addStretch();
    column->addLayout(sides);
    mine->setAutoDefault(false);
    theirs->setAutoDefault(false);
    connect(mine, &QPushButton::clicked, this, [this] { choose(ConflictSide::Mine); });
    connect(theirs, &QPushButton::clicked, this, [this] { choose(ConflictSide::Theirs); });

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    save = buttons->button(QDialogButtonBox::Save);
    save->setText(isSave ? tr("&Save") : tr("&Apply"));
    save->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);

    connect(rows, &QTreeWidget::itemSelectionChanged, this, &ConflictDialog::showState);
    rows->selectAll();
    rows->setFocus();
    showState();
}

void ConflictDialog::setUpRows(const QString& theirsTitle)
{
    rows->setObjectName(QStringLiteral("conflictRows"));
    rows->setAccessibleName(tr("Conflicts"));
    rows->setRootIsDecorated(false);
    rows->setAllColumnsShowFocus(true);
    rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rows->setHeaderLabels({tr("Attribute"), tr("Mine"), theirsTitle, tr("Choice")});
    auto* const wrapping = new DifferenceDelegate(MineColumn, rows);
    QHeaderView* const header = rows->header();
    header->setStretchLastSection(false);
    for (const int column : {PathColumn, MineColumn, TheirsColumn}) {
        rows->setItemDelegateForColumn(column, wrapping);
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    }
    // As wide as its texts, so that it is seen at any width of the window.
    header->setSectionResizeMode(ChoiceColumn, QHeaderView::Fixed);
    header->resizeSection(ChoiceColumn, std::max(header->sectionSizeHint(ChoiceColumn),
                                                 fontMetrics().horizontalAdvance(tr("take theirs")) + 16));
    auto* const wrapAnew = new QTimer(this); // once for all sections
    wrapAnew->setSingleShot(true);
    wrapAnew->setInterval(0);
    connect(header, &QHeaderView::sectionResized, wrapAnew, [wrapAnew] { wrapAnew->start(); });
    connect(wrapAnew, &QTimer::timeout, rows, &QTreeWidget::doItemsLayout);
}

void ConflictDialog::addRows(const QString& backend, const QVector<UnsavedChange>& conflicts)
{
    using Kind = UnsavedChange::Kind;
    for (const UnsavedChange& conflict : conflicts) {
        const QString inFile =
            conflict.path == backend ? QStringLiteral(".") : conflict.path.mid(backend.size() + 1);
        const bool isGone =
            conflict.path == backend && !conflict.before.isValid() && !conflict.after.isValid();
        auto* const row = new QTreeWidgetItem(
            rows,
            {inFile, isGone ? tr("what is open") : sideText(conflict.after, conflict.kind != Kind::Removed),
             isGone ? tr("the file is gone") : sideText(conflict.before, conflict.kind != Kind::Created)});
        row->setData(PathColumn, pathRole, conflict.path);
        row->setToolTip(PathColumn, toolTipText(conflict.path));
        for (const int column : {MineColumn, TheirsColumn})
            row->setToolTip(column, toolTipText(row->text(column)));
    }
}

void ConflictDialog::choose(ConflictSide side)
{
    const auto selected = rows->selectedItems();
    for (QTreeWidgetItem* row : selected) {
        row->setData(ChoiceColumn, choiceRole, int(side));
        row->setText(ChoiceColumn, side == ConflictSide::Mine ? tr("keep mine") : tr("take theirs"));
    }
    showState();
}

void ConflictDialog::showState()
{
    const bool isAnySelected = rows->selectionModel()->hasSelection();
    mine->setEnabled(isAnySelected);
    theirs->setEnabled(isAnySelected);
    save->setEnabled(getChoices().size() == rows->topLevelItemCount());
}

QMap<QString, ConflictDialog::ConflictSide> ConflictDialog::getChoices() const
{
    QMap<QString, ConflictSide> choices;
    for (int number = 0; number < rows->topLevelItemCount(); ++number) {
        const QTreeWidgetItem& row = *rows->topLevelItem(number);
        const QVariant choice = row.data(ChoiceColumn, choiceRole);
        if (choice.isValid())
            choices.insert(row.data(PathColumn, pathRole).toString(), ConflictSide(choice.toInt()));
    }
    return choices;
}

} // namespace Vantry
