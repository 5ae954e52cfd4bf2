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
    QStringList getNotices() const { return notices; }

    void closeNotices();

private:
    void setUp();
    void showNotices();
    void fitHeight();
    bool eventFilter(QObject* watched, QEvent* event) override;

    QLabel* text = nullptr; // a child, made for the first notice
    QStringList notices;
};

} // namespace Vantry
