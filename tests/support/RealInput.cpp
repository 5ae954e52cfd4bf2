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

bool drag(const QWidget& from, const QPoint& fromPosition, const QWidget& to, const QPoint& toPosition)
{
    const QPoint begin = from.mapToGlobal(fromPosition);
    const QPoint end = to.mapToGlobal(toPosition);
    QStringList arguments;
    const auto moveTo = [&arguments](const QPoint& place) {
        arguments << QStringLiteral("mousemove") << QString::number(place.x()) << QString::number(place.y())
                  << QStringLiteral("sleep") << QStringLiteral("0.02");
    };
    moveTo(begin);
    arguments << QStringLiteral("mousedown") << QStringLiteral("1");
    constexpr int steps = 5; // the first ones begin the drag, the last ones reach the target
    for (int step = 1; step <= steps; ++step)
        moveTo(begin + (end - begin) * step / steps);
    arguments << QStringLiteral("mouseup") << QStringLiteral("1");
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), arguments);
    return QTest::qWaitFor([&xdotool] { return xdotool.state() == QProcess::NotRunning; }, 10'000) &&
           xdotool.exitCode() == 0;
}

bool showActive(QWidget& widget)
{
    widget.show();
    widget.activateWindow();
    return QTest::qWaitForWindowActive(&widget);
}

} // namespace TestSupport
