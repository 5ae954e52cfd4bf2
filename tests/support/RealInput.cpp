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

bool click(const QWidget& widget, const QPoint& position, Qt::MouseButton button)
{
    const QPoint global = widget.mapToGlobal(position);
    const QString number = button == Qt::RightButton ? QStringLiteral("3") : QStringLiteral("1");
    return runXdotool({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y()),
                       QStringLiteral("click"), number});
}

bool showActive(QWidget& widget)
{
    widget.show();
    widget.activateWindow();
    return QTest::qWaitForWindowActive(&widget);
}

} // namespace TestSupport
