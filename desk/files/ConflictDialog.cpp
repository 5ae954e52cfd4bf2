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

enum Column { PathColumn, MineColumn, TheirsColumn, BaseColumn, ChoiceColumn };

constexpr int pathRole = Qt::UserRole;   // of the first column
constexpr int choiceRole = Qt::UserRole; // of the last: a ConflictSide as a number; nothing while not chosen

QString choiceText(ConflictDialog::ConflictSide side)
{
    using Side = ConflictDialog::ConflictSide;
    return side == Side::Mine     ? ConflictDialog::tr("keep mine")
           : side == Side::Theirs ? ConflictDialog::tr("take theirs")
                                  : ConflictDialog::tr("take base");
}

// What one side holds.
QString sideText(const QVariant& value, bool isThere)
{
    if (!isThere)
        return ConflictDialog::tr("(not there)");
    constexpr int longest = 1000000; // two may differ at their ends only
    return value.isValid() ? Utilities::ModelViews::attributeValueLines(value, longest, longest)
                           : ConflictDialog::tr("(not shown)");
}

// Where values are not to be shown, both sides lack theirs as well.
QString baseText(const ConflictDialog::UnsavedChange& conflict)
{
    const bool isHidden = !conflict.before.isValid() && !conflict.after.isValid();
    return sideText(conflict.base, conflict.base.isValid() || isHidden);
}

} // namespace

ConflictDialog::ConflictDialog(Purpose dialogPurpose, const QString& backend, const QString& label,
                               const QVector<UnsavedChange>& conflicts, QWidget* parent)
    : QDialog(parent), purpose(dialogPurpose), rows(new QTreeWidget)
{
    setObjectName(QStringLiteral("conflicts"));
    const bool isSave = purpose == Purpose::Save;
    setWindowTitle(isSave ? tr("Changed by Another Program") : tr("Changed since Then"));
    resize(860, 360);
    auto* const column = new QVBoxLayout(this);
    auto* const text = new PlainLabel(
        (isSave ? tr("%1 was not saved: another program has changed what was edited here. Choose for each "
                     "attribute whose value is to stay; all others are merged.")
                : tr("%1 has been changed since the kept changes were made. Choose for each attribute whose "
                     "value is to stay; all others are applied."))
            .arg(breakableText(label)));
    text->setWordWrap(true);
    column->addWidget(text);

    setUpRows();
    addRows(backend, conflicts);
    column->addWidget(rows, 1);
    setUpSides(*column);

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

void ConflictDialog::setUpSides(QVBoxLayout& column)
{
    auto* const row = new QHBoxLayout;
    row->addWidget(new PlainLabel(tr("For the selected rows:")));
    const auto offer = [&](ConflictSide side, const QString& title) {
        auto* const button = new QPushButton(title);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, side] { choose(side); });
        row->addWidget(button);
        sides.append(button);
    };
    offer(ConflictSide::Mine, tr("Keep &Mine"));
    offer(ConflictSide::Theirs, tr("Take &Theirs"));
    if (purpose == Purpose::Save)
        offer(ConflictSide::Base, tr("Take &Base"));
    row->addStretch();
    column.addLayout(row);
}

void ConflictDialog::setUpRows()
{
    rows->setObjectName(QStringLiteral("conflictRows"));
    rows->setAccessibleName(tr("Conflicts"));
    rows->setRootIsDecorated(false);
    rows->setAllColumnsShowFocus(true);
    rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const QString theirsTitle = purpose == Purpose::Save ? tr("Theirs") : tr("Now");
    rows->setHeaderLabels({tr("Attribute"), tr("Mine"), theirsTitle, tr("Base"), tr("Choice")});
    rows->setColumnHidden(BaseColumn, purpose != Purpose::Save);
    auto* const wrapping = new DifferenceDelegate(MineColumn, rows);
    QHeaderView* const header = rows->header();
    header->setStretchLastSection(false);
    for (const int column : {PathColumn, MineColumn, TheirsColumn, BaseColumn}) {
        rows->setItemDelegateForColumn(column, wrapping);
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    }
    // As wide as its texts, so that it is seen at any width of the window.
    header->setSectionResizeMode(ChoiceColumn, QHeaderView::Fixed);
    int width = header->sectionSizeHint(ChoiceColumn);
    for (const ConflictSide side : {ConflictSide::Mine, ConflictSide::Theirs, ConflictSide::Base})
        width = std::max(width, fontMetrics().horizontalAdvance(choiceText(side)) + 16);
    header->resizeSection(ChoiceColumn, width);
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
             isGone ? tr("the file is gone") : sideText(conflict.before, conflict.kind != Kind::Created),
             isGone ? tr("the file as it was") : baseText(conflict)});
        row->setData(PathColumn, pathRole, conflict.path);
        row->setToolTip(PathColumn, toolTipText(conflict.path));
        for (const int column : {MineColumn, TheirsColumn, BaseColumn})
            row->setToolTip(column, toolTipText(row->text(column)));
    }
}

void ConflictDialog::choose(ConflictSide side)
{
    const auto selected = rows->selectedItems();
    for (QTreeWidgetItem* row : selected) {
        row->setData(ChoiceColumn, choiceRole, int(side));
        row->setText(ChoiceColumn, choiceText(side));
    }
    showState();
}

void ConflictDialog::showState()
{
    const bool isAnySelected = rows->selectionModel()->hasSelection();
    for (QPushButton* const side : qAsConst(sides))
        side->setEnabled(isAnySelected);
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
