#pragma once

#include <QScrollArea>
#include <QStringList>

class QVBoxLayout;

namespace Vantry {

// What the work area shows while no file is open: the ways to open one. GUI thread.
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

    // Lists the recent files as of now.
    void refresh();

signals:
    void chooseRequested();
    void openRequested(const QStringList& files);
    void exampleRequested();

private:
    void addRecent(const QString& file);

    // Children.
    QWidget* recent;
    QVBoxLayout* recentFiles;
};

} // namespace Vantry
