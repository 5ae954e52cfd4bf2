#pragma once

#include <QWidget>

#include <memory>

class QMovie;

namespace Ui {
class BusyWidget;
}

// A window without a frame that keeps the user from the others while something takes its time. Its animation
// freezes while the GUI thread is blocked. GUI thread.
class BusyWidget : public QWidget
{
    Q_OBJECT

public:
    explicit BusyWidget(QWidget* parent = nullptr);
    ~BusyWidget() override;

    void setStatusText(const QString& text);

private:
    std::unique_ptr<Ui::BusyWidget> ui;
    std::unique_ptr<QMovie> movie;
};
