#pragma once

#include <QIcon>
#include <QMap>
#include <QScrollArea>

class QPushButton;
class QVBoxLayout;

namespace Vantry {

// The control widgets of all applications, one below the other, each below a heading with its application's
// icon and name, which leads to the application. GUI thread.
class NavigationArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit NavigationArea(QWidget* parent = nullptr);

    struct Application
    {
        QString identification;
        QIcon icon;
        QString name;
        QWidget* control = nullptr; // becomes a child, if there is one
        bool hasPage = false;       // to which its heading leads
    };

    // What leads to an application with a page is among the actions of this widget, too, with a key.
    void addApplication(const Application& application);

    // Marks the heading of the application that is shown, where there are several to choose from; none for an
    // empty name.
    void markApplication(const QString& identification);

signals:
    void chosen(const QString& identification);

private:
    QWidget* makeHeading(const Application& application);

    QVBoxLayout* layout;                  // of the scrolled widget
    QMap<QString, QPushButton*> headings; // of applications with pages, by their names; not owned
};

} // namespace Vantry
