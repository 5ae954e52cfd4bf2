#pragma once

#include "tests/widgets/BrowserPage.h"

#include <QAbstractEventDispatcher>

#include <benchmark/benchmark.h>

// Counts how often a widget is painted.
class Paints : public QObject
{
public:
    explicit Paints(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

inline void finishEvents()
{
    do
        QCoreApplication::sendPostedEvents();
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
}

// The page in a window. Its filter boxes offer all attributes once it is read, since the search path leads to
// the node that holds them.
class ShownPage : public BrowserPage
{
public:
    explicit ShownPage(benchmark::State& benchmarkState) : treePaints(tree.viewport()), state(benchmarkState)
    {
        widget.show();
        search.setText(QStringLiteral("demo.*"));
        finishEvents();
    }

    void pressRead() { QTest::mouseClick(&readButton, Qt::LeftButton); }

    // Seconds until what the act has caused is done and the counted widget painted.
    template <typename Act>
    double time(Paints& paints, const Act& act)
    {
        const int before = paints.count;
        QElapsedTimer timer;
        timer.start();
        act();
        finishEvents();
        const double seconds = double(timer.nsecsElapsed()) / 1e9;
        if (paints.count == before)
            state.SkipWithError("what was to be seen was not painted");
        return seconds;
    }

    void expectNames(int count)
    {
        if (boxes.first()->count() != count + 1)
            state.SkipWithError("the first filter box does not offer all attributes");
    }

    Paints treePaints;

private:
    benchmark::State& state;
};
