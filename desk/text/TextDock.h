#pragma once

#include "desk/common/LatestTask.h"
#include "desk/text/TextModel.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDockWidget>

#include <memory>

class QLabel;
class QStackedWidget;
class QTreeView;

namespace Vantry {

class PlaceWatch;
class TextRowDelegate;

// The text of the file that has the selected attribute, as saving would write it: the value of that is
// framed, and what is unsaved is tinted. A click selects the attribute whose value is there. Read on another
// thread while the dock is seen. GUI thread.
class TextDock : public QDockWidget
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The watch outlives it.
    TextDock(std::shared_ptr<Repository> repository, PlaceWatch& watch, QWidget* parent = nullptr);

    // Leads the keyboard there.
    void showText();

    void setVisible(bool isVisible) override;

    // For what no signal tells, as that a save has made what was unsaved saved.
    void look();

signals:
    void selectRequested(const QString& path);
    void menuRequested(const QPoint& point); // for what is selected, at a point of the screen

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void setUp();
    void read();
    void take(const QString& backend, const std::shared_ptr<const TextRows>& rows, const QString& refusal);
    void showValue();
    void requestMenu(const QPoint& position);
    void selectAt(const QPoint& position); // of the view
    void selectAt(int row, int column);
    void copySelected() const;

    std::shared_ptr<Repository> repository;
    PlaceWatch& watch;
    TextModel model;
    LatestTask reader;
    QString backend; // whose text is shown or being read
    quint64 revision = 0;
    bool isUnsaved = false; // at that time

    // Children; none before the dock is shown.
    QStackedWidget* pages = nullptr;
    QLabel* note = nullptr;
    QTreeView* view = nullptr;
    TextRowDelegate* delegate = nullptr;
};

} // namespace Vantry
