#pragma once

#include "desk/common/WorkAreaBar.h"

#include <QStringList>

namespace Vantry {

// Tells what went wrong, until the user closes it. Hidden while there is nothing to tell. GUI thread.
class NoticeBar : public WorkAreaBar
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr) : WorkAreaBar("noticeBar", parent) {}

    // Adds texts to those that are shown; a text that is there already is not repeated. Of very many, the
    // oldest go; what is very long loses its end.
    void addNotices(const QStringList& texts);

    // Offers to open these files, which notices begin with, as a type of the person's choice.
    void offerOpening(const QStringList& files);
    QStringList getNotices() const { return notices; }

    void closeNotices();

signals:
    void openRequested(const QStringList& files, const QString& type);

private:
    void requestOpening(const QString& type);
    void addOpenButton();
    void setUp();
    void showNotices();
    void fitHeight();
    bool eventFilter(QObject* watched, QEvent* event) override;

    QLabel* text = nullptr;      // a child, made for the first notice
    QToolButton* open = nullptr; // a child, made for the first such files
    QStringList unknown;         // files that the button is about
    QStringList notices;
};

} // namespace Vantry
