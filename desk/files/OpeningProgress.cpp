#include "desk/files/OpeningProgress.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QProgressBar>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

OpeningProgress::OpeningProgress(FileMounter& fileMounter,
                                 std::shared_ptr<FileMounter::Repository> attributes)
    : mounter(fileMounter), repository(std::move(attributes)), text(new PlainLabel), bar(new QProgressBar)
{
    setObjectName(QStringLiteral("openingProgress"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text);
    row->addWidget(bar);
    bar->setTextVisible(false);
    bar->setMaximumWidth(bar->fontMetrics().averageCharWidth() * 20);
    hide();
    constexpr int patience = 300;
    timer.setInterval(patience);
    connect(&timer, &QTimer::timeout, this, &OpeningProgress::look);
    connect(&mounter, &FileMounter::started, &timer, qOverload<>(&QTimer::start));
}

void OpeningProgress::look()
{
    setVisible(mounter.isBusy());
    if (!mounter.isBusy()) {
        timer.stop();
        return;
    }
    int done = 0;
    int total = 0;
    bool areEntries = false; // of a store
    const auto backends = repository->getBackendInterface();
    const QStringList names = backends->getBackendNames();
    for (const QString& name : names) {
        if (name.contains(QLatin1Char('.'))) // a file of a folder
            continue;
        const auto information = backends->getBackendInformation(name);
        const auto progress =
            information ? information->getProgress() : decltype(information->getProgress())();
        done += progress.done;
        total += progress.total;
        areEntries =
            areEntries || (progress.total > 0 && information->getBackendType() == QLatin1String("etcd"));
    }
    const QLocale locale;
    text->setText(total == 0 ? tr("Opening files")
                             : (areEntries ? tr("Loading %1 of %2 entries") : tr("Opening %1 of %2 files"))
                                   .arg(locale.toString(std::min(done + 1, total)), locale.toString(total)));
    bar->setRange(0, total);
    bar->setValue(done);
}

} // namespace Vantry
