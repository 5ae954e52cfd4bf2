#include "host/Utilities/UnsavedBackends.h"

#include "host/Utilities/PollingPause.h"

#include <QGuiApplication>

namespace Utilities {

UnsavedBackends::UnsavedBackends(std::shared_ptr<ChangesInterface> changesInterface, QObject* parent)
    : QObject(parent), changes(std::move(changesInterface))
{
    if (!changes)
        return;
    connect(&timer, &QTimer::timeout, this, [this] {
        if (!PollingPause::isOn())
            look();
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &UnsavedBackends::setPace);
    setPace();
}

// What nobody works with changes by other programs only.
void UnsavedBackends::setPace()
{
    constexpr int whileActive = 200; // milliseconds
    constexpr int otherwise = 1000;
    timer.start(QGuiApplication::applicationState() == Qt::ApplicationActive ? whileActive : otherwise);
}

void UnsavedBackends::look()
{
    const QStringList before = names;
    if (changes)
        names = changes->getEditedBackends();
    if (names != before)
        emit changed();
    emit looked();
}

} // namespace Utilities
