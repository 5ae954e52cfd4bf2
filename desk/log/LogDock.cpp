#include "desk/log/LogDock.h"

#include "desk/log/LogFeed.h"
#include "desk/log/LogView.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace Vantry {

using Shared::Logging::LogMessageType;

LogDock::LogDock(LogFeed& feed, QWidget* parent) : QDockWidget(tr("Log"), parent)
{
    setObjectName(QStringLiteral("logDock"));
    shownLines.setSourceModel(&lines);
    connect(&feed, &LogFeed::linesRead, &lines, &LogModel::addLines);
    hide();
}

void LogDock::setVisible(bool isVisible)
{
    if (isVisible && !view)
        setUp();
    QDockWidget::setVisible(isVisible);
}

void LogDock::setUp()
{
    view = new LogView(lines, shownLines);
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(4, 4, 4, 0);
    row->setSpacing(12);
    addTypeBox(*row, LogMessageType::Information, "logInformation");
    addTypeBox(*row, LogMessageType::Outcome, "logOutcomes");
    addTypeBox(*row, LogMessageType::Failure, "logFailures");
    addTextFilter(*row);
    row->addWidget(createClearButton());
    column->addLayout(row);
    column->addWidget(view, 1);
    setWidget(content);
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

void LogDock::addTextFilter(QHBoxLayout& row)
{
    auto* const text = new QLineEdit;
    text->setObjectName(QStringLiteral("logText"));
    text->setPlaceholderText(tr("Only lines with this text"));
    text->setAccessibleName(text->placeholderText());
    text->setClearButtonEnabled(true);
    connect(text, &QLineEdit::textChanged, &shownLines, &LogFilter::setText);
    row.addWidget(text, 1);
}

QToolButton* LogDock::createClearButton()
{
    auto* const action = new QAction(tr("C&lear"), view);
    view->addAction(action); // into its menu, too
    action->setToolTip(tr("Empty this list; what comes is shown again"));
    connect(action, &QAction::triggered, &lines, &LogModel::clear);
    auto* const clear = new QToolButton;
    clear->setObjectName(QStringLiteral("logClear"));
    clear->setFocusPolicy(Qt::StrongFocus);
    clear->setDefaultAction(action);
    return clear;
}

void LogDock::showLines()
{
    show();
    raise();
    view->setFocus();
}

} // namespace Vantry
