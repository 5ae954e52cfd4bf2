#pragma once

#include <QObject>
#include <QStringList>

class QWidget;

namespace Vantry {

// Takes files that are dropped anywhere on a window, before the fields and views under the mouse see them as
// texts. All else that is dragged is left to those. GUI thread.
class FileDrops : public QObject
{
    Q_OBJECT

public:
    explicit FileDrops(QWidget& window); // the Qt parent

signals:
    void dropped(const QStringList& files);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& window;
};

} // namespace Vantry
