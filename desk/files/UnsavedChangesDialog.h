#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"

#include <QDialog>

#include <atomic>
#include <future>
#include <memory>
#include <vector>

namespace Vantry {

class DiffView;

// Asks what becomes of unsaved changes before they are lost, and shows what saving would write. GUI thread.
class UnsavedChangesDialog : public QDialog
{
    Q_OBJECT

public:
    using ChangesInterface = FrameworkCore::AppConfig::Interfaces::ChangesInterface;

    enum class Answer { Save, Discard, Cancel };

    struct Edited
    {
        QString backend;
        QString label; // for people
    };

    // The question says what is about to happen. The differences appear when they are found, which takes some
    // time in large files; where they cannot be, it says why, and asks all the same.
    UnsavedChangesDialog(const QString& question, const std::vector<Edited>& edited,
                         const std::shared_ptr<ChangesInterface>& changes, QWidget* parent);

    // Waits for the file whose differences are being found.
    ~UnsavedChangesDialog() override { isOver = true; }

    // Runs the dialog.
    Answer ask();

private:
    void addDifference(const QString& text);
    void findDifferences(const std::vector<Edited>& edited, ChangesInterface& changes);
    static QString differenceOf(const Edited& edited, ChangesInterface& changes);

    DiffView* view; // a child
    Answer answer = Answer::Cancel;
    std::atomic<bool> isOver{false}; // the worker need not look at the next file
    std::future<void> worker;        // goes only when its thread has ended
};

} // namespace Vantry
