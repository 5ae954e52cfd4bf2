#include "desk/LogDock.h"

#include "desk/LogFeed.h"
#include "desk/LogView.h"

#include <QAction>
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
    addTypeButton(*row, LogMessageType::Information, "logInformation");
    addTypeButton(*row, LogMessageType::Outcome, "logOutcomes");
    addTypeButton(*row, LogMessageType::Failure, "logFailures");

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
    setFocusProxy(view);
    hide();
}

void LogDock::addTypeButton(QHBoxLayout& row, LogMessageType type, const char* name)
{
    auto* const button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setIcon(LogModel::iconOf(type));
    button->setText(LogModel::nameOf(type));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setToolTip(tr("Show lines of this type"));
    button->setCheckable(true);
    button->setChecked(true);
    connect(button, &QToolButton::toggled, &shownLines,
            [this, type](bool isShown) { shownLines.showType(type, isShown); });
    row.addWidget(button);
}

void LogDock::showLines()
{
    show();
    raise();
    view->setFocus();
}

} // namespace Vantry
