#pragma once

#include "desk/log/SuccessWatch.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RefusedEdits.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace Vantry {

class LogFeed;

// Tells in the status bar that something failed: the reason that the repository gives, rather than what
// follows from it. It goes after some seconds, or as soon as the same has succeeded. What a person has
// entered in vain stays until then, or until it is closed, and can be copied or edited again, or where the
// type was in the way, written with another type. F6 leads to its buttons, Escape closes it. GUI thread.
class FailureHint : public QWidget
{
    Q_OBJECT

public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    FailureHint(LogFeed& feed, std::shared_ptr<RepositoryInterface> repository, QWidget* parent = nullptr);

    QString getText() const { return text; } // empty without a hint

    // Leads the keyboard to the buttons; a child of this, enabled while there is a message.
    QAction* getReachAction() const { return reachAction; }

    // To be called again and again: drops the failure of a backend that has left this list, and offers to
    // edit again what can be edited.
    void showUnsaved(const QStringList& backends);

    // Shows and keeps what was entered in vain.
    void takeEdit(const Utilities::RefusedEdit& refused);

signals:
    void logRequested();
    void editRequested(const Utilities::RefusedEdit& edit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* addButton(QHBoxLayout& row, const char* name, const QString& caption,
                           const QString& toolTip);
    int iconSize() const;
    void look(const QVector<Shared::Logging::LogLine>& lines);
    void tell(const Shared::Logging::LogLine& failure);
    void show(const QString& failure);
    void endText();
    void endEdit();
    void fitText();
    void setUpButtons(QHBoxLayout& row);
    void setUpReaching();
    void reach();
    void close();
    void vanish();
    void requestEdit();
    void changeType();
    QString shownPath() const;
    QVariant valueOfOtherType() const;
    QString textOfEdit() const;
    void offerEdit();
    bool hasKeyboard() const;

    std::shared_ptr<RepositoryInterface> repository;
    const quint64 lastBefore; // the line of the log that came before the window

    // Children.
    QAction* reachAction;
    QLabel* icon;
    QLabel* label;
    QToolButton* again = nullptr;
    QToolButton* type = nullptr;
    QToolButton* copy = nullptr;
    QPointer<QWidget> cameFrom; // had the keyboard before

    QString text;
    QString unsavedBackend; // that the text is about
    bool isReason = false;  // the text is of the repository
    QElapsedTimer age;
    QTimer life;
    SuccessWatch success; // of what the text is about

    Utilities::RefusedEdit edit; // without a path when there is none to keep
    QVariant otherValue;         // that it would be as one of another type; invalid where this is not offered
    SuccessWatch editSuccess;
};

} // namespace Vantry
