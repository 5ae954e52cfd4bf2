#pragma once

#include "desk/find/HitModel.h"
#include "desk/find/HitPlaces.h"
#include "desk/find/SearchRun.h"
#include "desk/find/SearchScope.h"

#include <QDockWidget>
#include <QTimer>

#include <future>

class QLabel;
class QPushButton;

namespace Vantry {

class HitView;
class SearchForm;

// Finds attributes in the open files, and replaces texts in their values. It searches while one types. What
// it consists of is made when it is shown first. GUI thread.
class FindDock : public QDockWidget
{
    Q_OBJECT

public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The files outlive the dock. The path is that of the node which is selected in the tree, or empty.
    FindDock(std::shared_ptr<Repository> repository, BackendFiles& files,
             SearchScope::SelectedPath selectedPath, QWidget* parent = nullptr);

    // Opens it, and gives the focus to the text.
    void beginFinding();
    void beginReplacing();

    // Chooses the next or former of what was found.
    void goBy(int step);

    void setVisible(bool isVisible) override;

signals:
    void chosen(const QString& path);

private:
    void setUp();
    void addStatus();
    void begin(bool isReplacing);
    void scheduleSearch();
    void search();
    void show(const QVector<SearchRun::SearchHit>& hits);
    void finish(const Outcome& outcome);
    void enterHits();
    void choose(const QModelIndex& row);
    void showStatus();
    void showButtons();
    bool mayReplace();
    void replaceChecked();
    void finishReplacing(const Outcome& outcome, int count);

    std::shared_ptr<Repository> repository;
    BackendFiles& files;
    const SearchScope::SelectedPath selectedPath;
    HitPlaces places;
    HitModel hits;
    SearchRun run;
    QTimer typing;         // until a search begins
    QString lastNotice;    // of what has ended
    bool isFaulty = false; // the text is none
    std::future<void> replacing;

    // Children, from the first showing on.
    SearchForm* form = nullptr;
    HitView* view = nullptr;
    QLabel* status = nullptr;
    QPushButton* stop = nullptr;
    QPushButton* replace = nullptr;
};

} // namespace Vantry
