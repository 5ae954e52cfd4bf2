#include "tests/support/RealInput.h"

#include <QProcess>
#include <QWidget>
#include <QtTest>

namespace TestSupport {

namespace {

bool runXdotool(const QStringList& arguments)
{
    const int result = QProcess::execute(QStringLiteral("xdotool"), arguments);
    if (result != 0)
        qWarning("xdotool %s gave %d", qPrintable(arguments.join(QLatin1Char(' '))), result);
    return result == 0;
}

} // namespace

bool pressKey(const QString& name)
{
    return runXdotool({QStringLiteral("key"), name});
}

bool typeText(const QString& text)
{
    return runXdotool(
        {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"), QStringLiteral("--"), text});
}

bool click(const QWidget& widget, const QPoint& position)
{
    const QPoint global = widget.mapToGlobal(position);
    return runXdotool({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y()),
                       QStringLiteral("click"), QStringLiteral("1")});
}

bool showActive(QWidget& widget)
{
    widget.show();
    widget.activateWindow();
    return QTest::qWaitForWindowActive(&widget);
}

} // namespace TestSupport
