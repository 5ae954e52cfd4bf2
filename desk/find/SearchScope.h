#pragma once

#include "desk/files/BackendFiles.h"

#include <QPushButton>

#include <functional>

namespace Vantry {

// A button that says in which files is searched, and a menu to choose them: all, those that are checked, or
// what lies below the selected node. GUI thread.
class SearchScope : public QPushButton
{
    Q_OBJECT

public:
    using SelectedPath = std::function<QString()>;

    // The files outlive the button. The path is that of the node which is selected then, or empty.
    SearchScope(BackendFiles& files, SelectedPath selectedPath);

    QStringList getRoots() const; // empty for everywhere

signals:
    void changed();

private:
    void fill();
    void choose(const QStringList& roots);
    void toggle(const QString& backend, bool isChosen);
    void showChoice();

    BackendFiles& files;
    const SelectedPath selectedPath;
    QStringList roots; // that are chosen
};

} // namespace Vantry
