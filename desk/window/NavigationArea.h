#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace Vantry {

// The control widgets of all applications, one below the other, each headed by its application's icon and
// name. GUI thread.
class NavigationArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit NavigationArea(QWidget* parent = nullptr);

    // The widget becomes a child.
    void addControl(const QIcon& icon, const QString& name, QWidget* control);

private:
    QVBoxLayout* layout; // of the scrolled widget
};

} // namespace Vantry
