#pragma once

#include "repository/merge/DocumentChanges.h"
#include "repository/merge/PackedText.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Repository {

class Subtrees;

// A document, the text of its file that it began with (its base), and what two sides disagree on. What has
// been edited is found by comparing the two; nothing is recorded when a value is written. Paths are those of
// the document. Not safe for two threads at once.
class EditedDocument
{
public:
    using Outcome = Documents::Outcome;

    explicit EditedDocument(std::string documentType);

    // What a copy is made of, without the work of parsing.
    class Snapshot;
    Snapshot getSnapshot() const;
    explicit EditedDocument(const Snapshot& snapshot);

    // Drops everything and begins with this text. A text that does not parse changes nothing.
    Outcome load(std::string text);

    const std::string& getType() const { return type; }
    const Documents::Document& getDocument() const { return presentDocument(); }

    // Gives up the document of a text without edits, of which there may be thousands that nobody looks at,
    // and packs the text; it is unpacked and parsed again when it is asked for.
    void release();
    const std::string& getBase() const { return base.get(); }
    std::size_t getBaseSize() const { return base.getSize(); }
    std::string getText() const;
    bool hasEdits() const; // whether the text differs from the base; quick while nothing was written

    // Changes the document by an operation on it, and passes on what came of it. Where memory is refused in
    // the middle, the document is damaged: nothing is done with it until it is loaded or reverted as a whole.
    Outcome edit(const std::function<Outcome(Documents::Document&)>& operation);

    bool isDamaged() const { return damaged; }

    // Puts another text in the place of the document's, whatever has become of that. The base stays. A text
    // that does not parse changes nothing.
    Outcome replaceText(std::string text);

    // Another number after every change of the document, and of what is in conflict.
    std::size_t getRevision() const { return revision; }

    // The text that there was at a revision is what the file holds from now on, written from here: the two
    // sides agree.
    void setSaved(std::string text, std::size_t writtenRevision);

    // The text, of which the file holds this much from now on; the rest stays edited, and conflicts stay.
    void setPartSaved(std::string text) { setBase(std::move(text)); }

    // The file is given up: all that the document holds is an edit from now on.
    void dropBase();

    // Brings in a text that another program has written, given parsed and as it is: it becomes the base, the
    // edits stay on top of it, and what both sides changed becomes a conflict. When an edit has no place in
    // it, nothing changes but that conflicts may be added, and the text tells why.
    std::string merge(std::unique_ptr<Documents::Document> theirs, std::string text);

    // What was edited between two texts that both parse; groups that only lead to others are left out.
    static std::vector<DocumentChange> changesBetween(const std::string& type, std::string before,
                                                      std::string after);

    // Takes these entries and all below them back to what the base holds; everything for the empty path. The
    // reason of a refusal, with the document as it was.
    std::string revert(const std::vector<std::string>& paths);

    // The base with these entries and all below them as the document has them; nothing, with the reason,
    // where the others would be needed for that.
    std::optional<std::string> baseWith(const std::vector<std::string>& paths, std::string& reason) const;

    // What both sides have changed, what each holds now and what they began with; nothing where it has no
    // such entry.
    struct Conflict
    {
        std::string path;
        std::optional<FrameworkCore::Values::Value> base;
        std::optional<FrameworkCore::Values::Value> mine;
        std::optional<FrameworkCore::Values::Value> theirs;
    };

    // Conflicts that there still are, in order: where the two sides have become equal, there is none.
    std::vector<Conflict> getConflicts() const;

    // Gives these conflicts the values that both sides began with, which ends them. The reason of a refusal,
    // with the document as it was.
    std::string takeBases(const std::vector<Conflict>& chosen);

    // The document holds what was decided on at these paths and below, which ends their conflicts. One is
    // open again when an undo brings back what both sides began with.
    void settleConflicts(const std::vector<std::string>& paths);

private:
    static std::vector<std::string> pathsIn(const std::vector<DocumentChange>& changes,
                                            const Subtrees& subtrees);

    // Null, with the reason, for a refusal, and when these are all entries in which the two differ.
    struct Taken
    {
        std::unique_ptr<Documents::Document> document;
        std::string reason;
        bool areAll;
    };
    Taken takeEntries(const Documents::Document& from, const Documents::Document& model,
                      const std::vector<std::string>& paths) const;

    void begin(std::unique_ptr<Documents::Document> fresh, std::string text);
    void setBase(std::string text);
    PathSet conflictPaths() const;
    bool isOpen(const Conflict& conflict, bool isSettled) const;
    std::unique_ptr<Documents::Document> parsed(const std::string& text) const;
    Documents::Document& presentDocument() const;

    std::string type;
    mutable std::unique_ptr<Documents::Document> document; // null when it was released
    PackedText base;
    std::size_t revision = 0;
    bool damaged = false;
    // The text is put together once for all that a save asks; it is kept while it differs from the base.
    void compare() const;
    mutable std::size_t comparedRevision = 0; // at which the following was found out
    mutable bool differs = false;
    mutable std::string edited; // the text where it differs

    struct Origin
    {
        std::optional<FrameworkCore::Values::Value> before; // in the base; nothing where there was no entry
        std::optional<FrameworkCore::Values::Value> inBase; // as the base is now
        bool mayEnd =
            true; // when the other side takes its change back; it may also have changed nothing here
        bool isSettled = false;
    };
    using Origins = std::map<std::string, Origin>;
    Origins conflicts;
};

// Belongs to its maker alone.
class EditedDocument::Snapshot
{
    friend class EditedDocument;

    std::string type;
    std::string base;
    std::string text;
    std::size_t revision = 0;
    Origins conflicts;
};

} // namespace Repository
