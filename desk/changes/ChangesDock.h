#pragma once

#include "desk/changes/ChangesFeed.h"
#include "desk/changes/ChangesModel.h"
#include "desk/common/LatestTask.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDockWidget>

#include <memory>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace Vantry {

class BackendFiles;
class HunkView;

// All that is unsaved: of each file its attributes with the values that the file holds and would hold, and
// the lines that saving would write. Files, single attributes and single hunks are saved or dropped, and of
// conflicts one side is kept. Looked up on another thread while the dock is seen. GUI thread.
class ChangesDock : public QDockWidget
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The files outlive it.
    ChangesDock(std::shared_ptr<Repository> repository, BackendFiles& files, QWidget* parent = nullptr);

    // Leads the keyboard there.
    void showChanges();

    void setVisible(bool isVisible) override;

signals:
    void selectRequested(const QString& path);
    void menuRequested(const QPoint& point); // for what is selected, at a point of the screen
    void failed(const QString& reason);

private:
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // What is chosen in the rows: whole files, and paths of others.
    struct Chosen
    {
        QStringList backends;
        QMap<QString, QStringList> paths; // by backend
        QStringList conflicts;
    };

    void setUp();
    void setUpRows();
    void requestMenu(const QPoint& position);
    QWidget* setUpHunks();
    QPushButton* addButton(QHBoxLayout& row, const char* name, const QString& title, const QString& toolTip,
                           void (ChangesDock::*action)());
    void look();
    void take(const std::vector<ChangedFile>& changed);
    void showRow();
    void showDiff();
    void goToLines();
    void showState();
    Chosen getChosen() const;
    QString currentBackend() const;
    void save();
    void drop();
    void keepMine() { resolve(ConflictSide::Mine); }
    void takeTheirs() { resolve(ConflictSide::Theirs); }
    void takeBase() { resolve(ConflictSide::Base); }
    void resolve(ConflictSide side);
    void saveHunks();
    void dropHunks();
    void finish(const QStringList& refusals);

    std::shared_ptr<Repository> repository;
    BackendFiles& files;
    ChangesModel model;
    ChangesFeed feed;
    LatestTask placer;     // of a row's lines
    bool isTaking = false; // rows are being replaced

    // Children; none before the dock is shown.
    QStackedWidget* pages = nullptr;
    QLabel* none = nullptr;
    QTreeView* rows = nullptr;
    HunkView* hunks = nullptr;
    QPushButton* saveRows = nullptr;
    QPushButton* dropRows = nullptr;
    QPushButton* mine = nullptr;
    QPushButton* theirs = nullptr;
    QPushButton* base = nullptr;
    QPushButton* saveHunk = nullptr;
    QPushButton* dropHunk = nullptr;
};

} // namespace Vantry
