#include "desk/window/StartPage.h"

#include "desk/common/MenuText.h"
#include "desk/files/RecentFiles.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QCommandLinkButton>
#include <QFileInfo>
#include <QStyle>
#include <QVBoxLayout>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

PlainLabel* makeHeading(const QString& text, qreal factor)
{
    auto* const heading = new PlainLabel(text);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(true);
    heading->setFont(font);
    return heading;
}

} // namespace

StartPage::StartPage(QWidget* parent) : QScrollArea(parent), recent(new QWidget), recentFiles(new QVBoxLayout)
{
    setObjectName(QStringLiteral("startPage"));
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);

    auto* const open = new QCommandLinkButton(tr("&Open Configuration Files..."),
                                              tr("INI, JSON, TOML, XML, YAML and text files"));
    open->setObjectName(QStringLiteral("startOpen"));
    open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    connect(open, &QCommandLinkButton::clicked, this, &StartPage::chooseRequested);
    auto* const example = new QCommandLinkButton(
        tr("Open the &Example"), tr("A copy of your own of an imagined test bench, to try things out"));
    example->setObjectName(QStringLiteral("startExample"));
    example->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
    connect(example, &QCommandLinkButton::clicked, this, &StartPage::exampleRequested);

    auto* const recentColumn = new QVBoxLayout(recent);
    recentColumn->setContentsMargins(0, 12, 0, 0);
    recentColumn->addWidget(makeHeading(tr("Recent Files"), 1));
    recentColumn->addLayout(recentFiles);

    auto* const content = new QWidget;
    content->setMaximumWidth(560);
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(24, 32, 24, 24);
    column->addWidget(makeHeading(tr("No file is open"), 1.6));
    auto* const hint = new PlainLabel(tr("Drop configuration files anywhere onto this window, or:"));
    hint->setWordWrap(true);
    column->addWidget(hint);
    column->addWidget(open);
    column->addWidget(example);
    column->addWidget(recent);
    column->addStretch();

    auto* const centred = new QWidget;
    auto* const row = new QHBoxLayout(centred);
    row->addStretch();
    row->addWidget(content, 1);
    row->addStretch();
    setWidget(centred);
    setFocusProxy(open);
    refresh();
}

void StartPage::refresh()
{
    while (QLayoutItem* const item = recentFiles->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList files = RecentFiles::get();
    for (const QString& file : files) {
        if (RecentFiles::isStore(file) || QFileInfo::exists(file))
            addRecent(file);
    }
    recent->setVisible(recentFiles->count() > 0);
}

void StartPage::addRecent(const QString& file)
{
    // Of a store without what says how it is reached.
    const QFileInfo place(RecentFiles::isStore(file) ? file.section(QLatin1Char('?'), 0, 0) : file);
    auto* const button =
        new QCommandLinkButton(menuText(place.fileName()), RecentFiles::shownPath(place.path()));
    button->setToolTip(Utilities::ModelViews::toolTipText(file));
    button->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
    connect(button, &QCommandLinkButton::clicked, this, [this, file] { emit openRequested({file}); });
    recentFiles->addWidget(button);
}

} // namespace Vantry
