#include "desk/LogDock.h"

#include "desk/LogFeed.h"
#include "desk/LogView.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace Vantry {

using Shared::Logging::LogMessageType;

LogDock::LogDock(LogFeed& feed, QWidget* parent) : QDockWidget(tr("Log"), parent), textFilter(new QLineEdit)
{
    setObjectName(QStringLiteral("logDock"));
    shownLines.setSourceModel(&lines);
    view = new LogView(lines, shownLines);
    connect(&feed, &LogFeed::linesRead, &lines, &LogModel::addLines);

    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(4, 4, 4, 0);
    row->setSpacing(12);
    addTypeBox(*row, LogMessageType::Information, "logInformation");
    addTypeBox(*row, LogMessageType::Outcome, "logOutcomes");
    addTypeBox(*row, LogMessageType::Failure, "logFailures");

    textFilter->setObjectName(QStringLiteral("logText"));
    textFilter->setPlaceholderText(tr("Only lines with this text"));
    textFilter->setAccessibleName(textFilter->placeholderText());
    textFilter->setClearButtonEnabled(true);
    connect(textFilter, &QLineEdit::textChanged, &shownLines, &LogFilter::setText);
    row->addWidget(textFilter, 1);

    auto* const clearAction = new QAction(tr("C&lear"), view);
    view->addAction(clearAction); // into its menu, too
    clearAction->setToolTip(tr("Empty this list; what comes is shown again"));
    connect(clearAction, &QAction::triggered, &lines, &LogModel::clear);
    auto* const clear = new QToolButton;
    clear->setObjectName(QStringLiteral("logClear"));
    clear->setFocusPolicy(Qt::StrongFocus);
    clear->setDefaultAction(clearAction);
    row->addWidget(clear);

    column->addLayout(row);
    column->addWidget(view, 1);
    setWidget(content);
    hide();
}

void LogDock::addTypeBox(QHBoxLayout& row, LogMessageType type, const char* name)
{
    auto* const box = new QCheckBox(LogModel::nameOf(type));
    box->setObjectName(QLatin1String(name));
    box->setIcon(LogModel::iconOf(type));
    box->setToolTip(tr("Show lines of this type"));
    box->setChecked(true);
    connect(box, &QCheckBox::toggled, &shownLines,
            [this, type](bool isShown) { shownLines.showType(type, isShown); });
    row.addWidget(box);
}

void LogDock::showLines()
{
    show();
    raise();
    view->setFocus();
}

} // namespace Vantry
