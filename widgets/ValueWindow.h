#pragma once

#include <QDialog>
#include <QString>

class QPlainTextEdit;
class QSlider;

namespace Widgets {

// A window of its own with a value that is too long to be laid out at once: it shows a part of it, which a
// slider chooses, and copies all. GUI thread.
class ValueWindow : public QDialog
{
    Q_OBJECT

public:
    // The shown text may be the value laid out for reading; the value itself is copied.
    ValueWindow(const QString& path, const QString& shownText, const QString& value);

private:
    void showPart(int part);

    const QString text;
    QPlainTextEdit* view; // these are owned through their Qt parent, the window
    QSlider* slider;
};

} // namespace Widgets
