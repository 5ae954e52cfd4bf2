#pragma once

#include "host/Shared/Logging/LogRecord.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;

namespace Vantry {

class LogFeed;

// Tells in the status bar, for some seconds, that something failed: the reason that the repository gives,
// rather than what follows from it. GUI thread.
class FailureHint : public QWidget
{
    Q_OBJECT

public:
    explicit FailureHint(LogFeed& feed, QWidget* parent = nullptr);

    QString getText() const { return text; } // empty while nothing is told

signals:
    void logRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int iconSize() const;
    void look(const QVector<Shared::Logging::LogLine>& lines);
    void tell(const Shared::Logging::LogLine& failure);
    void end();
    void fitText();

    // Children.
    QLabel* icon;
    QLabel* label;

    QString text;
    bool isReason = false; // the text is of the repository
    QElapsedTimer age;
    QTimer life;
};

} // namespace Vantry
