#include "desk/window/NavigationArea.h"

#include "desk/common/FlatButtons.h"
#include "desk/common/MenuText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QAction>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry {

NavigationArea::NavigationArea(QWidget* parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("navigationArea"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* const column = new QWidget;
    layout = new QVBoxLayout(column);
    layout->addStretch(1); // takes all that is left, whatever the controls would
    setWidget(column);
}

void NavigationArea::addApplication(const Application& application)
{
    layout->insertWidget(layout->count() - 1, makeHeading(application));
    if (application.control) {
        layout->insertWidget(layout->count() - 1, application.control);
        application.control->show();
        // Where the keyboard begins; a heading is seldom what is wanted first.
        auto* const button = application.control->findChild<QAbstractButton*>();
        if (button && !window()->focusWidget())
            button->setFocus();
    }
    FlatButtons::style(*widget());
    setMinimumWidth(widget()->minimumSizeHint().width());
}

void NavigationArea::markApplication(const QString& identification)
{
    for (auto heading = headings.cbegin(); heading != headings.cend(); ++heading)
        FlatButtons::mark(**heading, headings.size() > 1 && heading.key() == identification);
}

QWidget* NavigationArea::makeHeading(const Application& application)
{
    auto* const heading = new QPushButton(application.icon, menuText(application.name));
    heading->setObjectName(QStringLiteral("heading_") + application.identification);
    heading->setProperty("subStyle", QStringLiteral("flatStyle"));
    constexpr int iconSize = 24;
    heading->setIconSize(QSize(iconSize, iconSize));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    if (!application.hasPage) {
        heading->setFocusPolicy(Qt::NoFocus);
        heading->setAttribute(Qt::WA_TransparentForMouseEvents);
        return heading;
    }
    headings.insert(application.identification, heading);
    auto* const showPage = new QAction(application.icon, menuText(application.name), this);
    constexpr int mostKeys = 9;
    if (actions().size() < mostKeys)
        showPage->setShortcut(Qt::CTRL + Qt::Key_1 + actions().size());
    addAction(showPage);
    const QString key = showPage->shortcut().toString(QKeySequence::NativeText);
    const QString tip = tr("Show this application");
    heading->setToolTip(
        Utilities::ModelViews::toolTipText(key.isEmpty() ? tip : tr("%1 (%2)").arg(tip, key)));
    connect(heading, &QPushButton::clicked, showPage, &QAction::trigger);
    connect(showPage, &QAction::triggered, this,
            [this, identification = application.identification] { emit chosen(identification); });
    return heading;
}

} // namespace Vantry
