#include "desk/window/ColourScheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <memory>

namespace Vantry {

namespace {

const QLatin1String service("org.freedesktop.portal.Desktop");
const QLatin1String object("/org/freedesktop/portal/desktop");
const QLatin1String settings("org.freedesktop.portal.Settings");
const QLatin1String appearance("org.freedesktop.appearance");
const QLatin1String colourScheme("color-scheme");

QPalette darkPalette()
{
    struct Colour
    {
        QPalette::ColorRole role;
        QRgb rgb;
    };
    static constexpr Colour colours[] = {
        {QPalette::Window, 0x363636},      {QPalette::WindowText, 0xe6e6e6},
        {QPalette::Base, 0x1e1e1e},        {QPalette::AlternateBase, 0x272727},
        {QPalette::Text, 0xe6e6e6},        {QPalette::PlaceholderText, 0x969696},
        {QPalette::Button, 0x424242},      {QPalette::ButtonText, 0xe6e6e6},
        {QPalette::BrightText, 0xffffff},  {QPalette::ToolTipBase, 0x3c3c3c},
        {QPalette::ToolTipText, 0xe6e6e6}, {QPalette::Light, 0x5a5a5a},
        {QPalette::Midlight, 0x4c4c4c},    {QPalette::Mid, 0x2a2a2a},
        {QPalette::Dark, 0x1a1a1a},        {QPalette::Shadow, 0x0a0a0a},
        {QPalette::Highlight, 0x2a6eb4},   {QPalette::HighlightedText, 0xffffff},
        {QPalette::Link, 0x6eb4ff},        {QPalette::LinkVisited, 0xbe96ff},
    };
    constexpr QRgb faded = 0x808080;
    QPalette palette;
    for (const Colour& colour : colours)
        palette.setColor(colour.role, QColor(colour.rgb));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, QColor(faded));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x464646));
    return palette;
}

// Whether neither a theme of the desktop nor the person has chosen colours.
bool hasUsualColours()
{
    const std::unique_ptr<QStyle> usual(QStyleFactory::create(QStringLiteral("Fusion")));
    return usual && QApplication::palette() == usual->standardPalette();
}

} // namespace

ColourScheme::ColourScheme(QObject* parent) : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !hasUsualColours())
        return;
    // Of whichever service: to name it would be to wait for the bus to look for it.
    bus.connect({}, object, settings, QStringLiteral("SettingChanged"), this,
                SLOT(follow(QString, QString, QDBusVariant)));
    ask();
}

void ColourScheme::ask()
{
    auto call = QDBusMessage::createMethodCall(service, object, settings, QStringLiteral("Read"));
    call << QString(appearance) << QString(colourScheme);
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError())
            show(reply.value().variant());
        answer->deleteLater();
    });
}

void ColourScheme::follow(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == appearance && key == colourScheme)
        show(value.variant());
}

// Read gives a variant within another one.
void ColourScheme::show(QVariant scheme)
{
    constexpr uint preferDark = 1;
    while (scheme.canConvert<QDBusVariant>())
        scheme = scheme.value<QDBusVariant>().variant();
    const bool wantsDark = scheme.toUInt() == preferDark;
    if (wantsDark == isDark)
        return;
    isDark = wantsDark;
    QApplication::setPalette(isDark ? darkPalette() : QPalette());
}

} // namespace Vantry
