#pragma once

#include <QPoint>
#include <QProcess>
#include <QTimer>

#include <random>

class QWidget;

namespace Soak {

// Somebody who works at the desk without a plan: keys and clicks as the X server makes them, at random places
// of what is shown, through menus, editors and dialogs. Leaves every file dialog again, since it may lead to
// anybody's files. GUI thread.
class RandomPerson : public QObject
{
public:
    // The window holds the tree and the monitor of the attribute page.
    RandomPerson(QWidget& window, double actionsPerSecond, unsigned seed);
    ~RandomPerson() override;

    int getActions() const { return actions; }

private:
    void act();
    void work();
    void answer(const QWidget& dialog);
    void clickIn(const QWidget& widget, int button, int times = 1);
    void dragRow();
    void press(const char* key);
    void send(const QString& command);
    QPoint placeIn(const QWidget& widget);
    int below(int end);
    template <int count>
    const char* oneOf(const char* const (&keys)[count])
    {
        return keys[below(count)];
    }

    QWidget& window;
    QWidget& tree;
    QWidget& monitor;
    std::mt19937 random;
    QProcess xdotool; // takes its commands one a line
    QTimer timer;
    int actions = 0;
};

} // namespace Soak
