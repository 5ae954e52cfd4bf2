#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;
class QScrollArea;

namespace Vantry {

// A bar above the work area that tells what went wrong, until the user closes it. Hidden while there is
// nothing to tell. GUI thread.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

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

    // Children, made for the first notice: most windows never need them, and their icons are searched for in
    // many folders.
    QLabel* text = nullptr;
    QScrollArea* scroller = nullptr;
    QStringList notices;
};

} // namespace Vantry
