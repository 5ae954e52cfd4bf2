#pragma once

#include <QObject>

namespace Vantry {

// Turns the signals by which a session or a terminal asks a program to end (SIGTERM, SIGINT, SIGHUP) into a
// Qt signal, so that the program can put its things in order. One object for the process; GUI thread.
class QuitSignals : public QObject
{
    Q_OBJECT

public:
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override; // the signals then end the process again

signals:
    void quitRequested();
};

} // namespace Vantry
