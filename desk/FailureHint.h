#pragma once

#include "desk/SuccessWatch.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RefusedEdits.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace Vantry {

class LogFeed;

// Tells in the status bar that something failed: the reason that the repository gives, rather than what
// follows from it. It goes after some seconds, or as soon as the same has succeeded. What a person has
// entered in vain stays until then, or until it is closed, and can be copied. GUI thread.
class FailureHint : public QWidget
{
    Q_OBJECT

public:
    FailureHint(LogFeed& feed, const std::shared_ptr<SuccessWatch::Notifications>& notifications,
                QWidget* parent = nullptr);

    QString getText() const { return text; } // empty while nothing is told

    // Drops the failure of a backend that has left this list.
    void showUnsaved(const QStringList& backends);

signals:
    void logRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* addButton(QHBoxLayout& row, const char* name, const QString& caption,
                           const QString& toolTip);
    int iconSize() const;
    void look(const QVector<Shared::Logging::LogLine>& lines);
    void tell(const Shared::Logging::LogLine& failure);
    void takeEdit(const Utilities::RefusedEdit& refused);
    void show(const QString& failure);
    void endText();
    void endEdit();
    void fitText();

    // Children.
    QLabel* icon;
    QLabel* label;
    QToolButton* copy;

    QString text;
    QString unsavedBackend; // that the text is about
    bool isReason = false;  // the text is of the repository
    QElapsedTimer age;
    QTimer life;
    SuccessWatch success; // of what the text is about

    Utilities::RefusedEdit edit; // without a path when there is none to keep
    SuccessWatch editSuccess;
};

} // namespace Vantry
