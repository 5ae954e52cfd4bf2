#pragma once

#include "desk/files/DiffView.h"

#include <QStringList>

#include <vector>

namespace Vantry {

// Shows the diff of one file, in which hunks are chosen by the cursor or the selection, which marks them. Of
// a very large diff the beginning is shown. GUI thread.
class HunkView : public DiffView
{
    Q_OBJECT

public:
    explicit HunkView(QWidget* parent = nullptr);

    // Keeps the cursor's line where the diff is another one of the same file.
    void showDiff(const QString& diff);

    // The texts of the chosen hunks, from "@@" on, as the diff has them.
    QStringList getChosen() const;

    // Goes to the hunk that has the line of the new text, from 1.
    void goToLine(int line);

signals:
    void choiceChanged();

private:
    struct Hunk
    {
        QString text;
        int firstBlock = 0; // of the view
        int lastBlock = 0;
        int firstLine = 0; // of the new text
        int lineCount = 0;
    };
    std::vector<const Hunk*> chosen() const;
    void readHunks(const QString& diff);
    void mark();

    std::vector<Hunk> hunks; // that are shown
};

} // namespace Vantry
