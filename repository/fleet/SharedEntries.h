#pragma once

#include "repository/merge/DocumentChanges.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// The order of a tree: a path, all below it, then its next sibling.
struct TreeOrder
{
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

// The entries of a store as they are here: what the store holds, and on top of it what was edited and is not
// written yet. An edit is in conflict when the store holds something else by now than it began with. Edits
// belong to batches, which are written in their order, each as a whole where it is not too large; one with a
// conflict, or that the store has refused, is held back. Not safe for two threads at once.
class SharedEntries
{
public:
    using Value = FrameworkCore::Values::Value;

    // What the store holds of an entry.
    struct Stored
    {
        std::optional<Value> value;
        std::int64_t revision = 0; // at which it was written last; 0 for none
        bool isForeign = false;    // in a form that must be left alone; the value is its text
    };

    // News of one entry.
    struct Arrival
    {
        std::string path;
        Stored stored;
        std::int64_t revision = 0; // of the change, also of a removal
        bool isOwn = false;        // it was written from here
    };

    // One edit, to be written where the store holds what was expected.
    struct Outgoing
    {
        std::string path;
        std::optional<Value> value;
        std::int64_t expected = 0;
        std::uint64_t number = 0; // of the edit
    };

    struct Edit
    {
        Stored base;              // what it began with
        Stored stored;            // what the store holds now
        std::uint64_t number = 0; // another one with each edit of the entry
        std::uint64_t batch = 0;
        std::uint64_t sent = 0;  // the number of the edit on its way to the store; 0 for none
        bool isReported = false; // its conflict
        bool isRefused = false;  // by the store

        bool isConflict() const { return stored.revision != base.revision; }
        bool isHeldBack() const { return isConflict() || isRefused; }
    };
    using Edits = std::map<std::string, Edit, TreeOrder>;

    // As they are here, edits included; groups are those that something lies in, and those with an entry.
    const Value* find(std::string_view path) const;
    bool contains(std::string_view path) const;
    bool isForeign(std::string_view path) const;
    std::size_t size() const { return entries.size(); }
    void visit(const std::function<void(const Documents::Entry& entry)>& visitor) const;
    // All but those that must be left alone, without groups in which something lies.
    void visitOwn(const std::function<void(const std::string& path, const Value& value)>& visitor) const;
    // The paths of entries at and below a path.
    std::vector<std::string> pathsWithin(std::string_view path) const;
    // The sibling before an entry; nothing for the first.
    std::optional<std::string> siblingBefore(std::string_view path) const;

    // Another number after each change of what is here.
    std::uint64_t getRevision() const { return revision; }

    // How many entries the store holds.
    std::size_t getStoredCount() const;

    const Edits& getEdits() const { return edits; }
    bool hasConflicts() const { return conflicts > 0; }

    // Begins a batch; what is edited until it ends is written together, and not before.
    std::uint64_t beginBatch() { return openBatch = ++batches; }
    void endBatch() { openBatch = 0; }

    // The batch of the newest edit, and whether the store holds all edits of that one and those before, or
    // later ones in their place.
    std::uint64_t getLastBatch() const { return batches; }
    bool isWrittenUpTo(std::uint64_t batch) const { return queue.empty() || queue.begin()->first > batch; }

    // Changes an entry here; nothing removes it. What equals what the store holds is no edit.
    void edit(const std::string& path, std::optional<Value> value);

    // Gives up edits at and below a path, and tells what that changes here.
    std::vector<DocumentChange> revert(const std::vector<std::string>& paths);

    // Ends conflicts at and below a path: what the store holds is to be overwritten. Gives whether there were
    // some.
    bool keepEdits(std::string_view path);

    // The same, and makes what they began with the edits. Tells what that changes here.
    std::vector<DocumentChange> takeBases(std::string_view path);

    // Whether news change what is here, and not only what is known of the store.
    bool concernsEntries(const std::vector<Arrival>& arrivals) const;

    // Takes over news of one revision, those that are not known yet, and tells what that changes here, in the
    // order that Projection asks for.
    std::vector<DocumentChange> take(const std::vector<Arrival>& arrivals);

    // Takes over all that the store holds, whatever it held before.
    std::vector<DocumentChange> takeAll(std::vector<Arrival> all);

    // Adds what the store holds, where nothing is yet; by several calls after clear.
    void clear();
    void fill(std::vector<Arrival> arrivals);

    // The paths of conflicts that this has not given before.
    std::vector<std::string> takeNewConflicts();

    // What to write next, as much as the bounds allow; empty for nothing. It is on its way until settle.
    // Of one batch alone, on request.
    enum class From { AllBatches, OneBatch };
    std::vector<Outgoing> takeOutgoing(std::size_t mostEntries, std::size_t mostBytes,
                                       From from = From::AllBatches);

    // Whether something is on its way, or was, and nobody knows whether it has arrived.
    bool isSomethingSent() const;

    // The store does not take it, so that it is held back from then on, until that is to be tried again.
    void refuse(const std::vector<Outgoing>& outgoing);
    void retryRefused();

    // Leaves out what was given up since it was taken.
    void dropUnwanted(std::vector<Outgoing>& outgoing) const;

    // It was written with that revision; or, with 0, not.
    void settle(const std::vector<Outgoing>& outgoing, std::int64_t writtenRevision);

private:
    struct Entry
    {
        Value value;
        std::int64_t revision = 0; // of the store's; while it is edited, the edit has it
        bool isForeign = false;
    };

    struct Batch
    {
        std::vector<std::string> paths; // some edits may have gone on to later batches
        std::size_t next = 0;           // of the paths, to be taken
        int live = 0;                   // edits that are still in it
        int heldBack = 0;               // of these
    };

    Stored storedAt(const std::string& path) const;
    std::int64_t knownRevisionOf(const std::string& path) const;
    std::optional<Value> valueHere(const std::string& path) const;
    void setHere(const std::string& path, const Stored& stored);
    std::optional<DocumentChange> takeOne(const Arrival& arrival);
    void change(Edit& edit, const std::function<void()>& operation);
    void enterBatch(const std::string& path, Edit& edit);
    void leaveBatch(const Edit& edit);
    bool dropIfDone(const std::string& path);
    std::vector<DocumentChange> ordered(std::vector<DocumentChange> changes) const;

    std::map<std::string, Entry, TreeOrder> entries;
    Edits edits;
    std::map<std::string, std::int64_t> removed; // from here, at which revision, until news tell of it
    std::map<std::uint64_t, Batch> queue;        // by the numbers of batches
    std::uint64_t revision = 0;
    std::uint64_t numbers = 0;
    std::uint64_t batches = 0;
    std::uint64_t openBatch = 0; // 0 for none
    int conflicts = 0;
};

} // namespace Repository
