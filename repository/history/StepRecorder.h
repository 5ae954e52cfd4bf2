#pragma once

#include "repository/history/HistoryStep.h"

#include <QHash>

#include <map>

namespace Repository {

// Gathers what one thread changes within one step. Values of attributes that must not be read are left out.
// One thread; called with locks of the store held.
class StepRecorder
{
public:
    // Beyond so many entries only the text is kept, which takes less room and time by far.
    static constexpr std::size_t mostEntries = 50000;

    explicit StepRecorder(const QString& name);
    ~StepRecorder();
    Q_DISABLE_COPY(StepRecorder)

    // False for what leaves no trace in history.
    static bool records(const Backend* backend);

    void addWrite(Backend& backend, ValueChange change);

    // Before a document is changed by more than one value, and afterwards; other writers are kept out in
    // between. Of several changes of one place the first and the last count.
    void beginShape(Backend& backend);
    void endShape(Backend& backend, std::vector<EntryChange> changes);

    // The text holds what must not be carried, or the entries are too many. Between the two.
    void forgetText(Backend& backend);
    void forgetEntries(Backend& backend);

    // What there is to undo. No lock of the store is held.
    HistoryStep finish();

private:
    struct Pending
    {
        BackendChange change;
        QHash<QString, int> valuePlaces;
        QHash<QString, int> entryPlaces;
        std::optional<std::string> textBefore; // once the shape has begun
        quint64 revision = 0;                  // of the document as this step left it
        bool isTextKnown = true;               // nobody else has changed the document since textBefore
    };

    Pending& pendingOf(Backend& backend);
    static void addEntry(Pending& pending, EntryChange change);
    static void finishShape(Pending& pending);
    static std::size_t sizeOf(const BackendChange& change);

    QString name;
    std::map<Backend*, Pending> pending; // by address; Pending owns the backend
};

} // namespace Repository
