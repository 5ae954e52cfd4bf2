#pragma once

#include "repository/documents/common/Values.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// What came of an operation on a document; without an error text it worked.
struct Outcome
{
    std::string error;      // for a person: what is wrong and what was expected
    std::size_t line = 0;   // from 1; 0 where the error has no place in the file
    std::size_t column = 0; // from 1, in characters; a byte that is not valid UTF-8 counts as one

    bool ok() const { return error.empty(); }
};

inline Outcome refused(std::string reason)
{
    return {std::move(reason), 0, 0};
}

// What came of an operation at a byte of a text. Lines end at "\n", "\r\n" or "\r"; a byte-order mark takes
// no column.
Outcome outcomeAt(std::string_view text, std::size_t offset, std::string error = {});

// One node of a document as the tree shows it.
struct Entry
{
    std::string path; // below the root: encoded components joined by "."; empty for the root itself
    Value value;      // Type::Group for a node without a value of its own
};

// Where an entry comes among the others of its group, in the order of visit.
struct SiblingPlace
{
    enum class Kind {
        First,
        After, // the sibling whose path is given
        Last,
        Unknown // finding it would take a walk over the document
    };

    Kind kind = Kind::Unknown;
    std::string sibling;
};

// Where a piece of text lies in getBytes.
struct Span
{
    std::size_t offset = 0;
    std::size_t length = 0;
};

// A configuration file as its author left it: the original bytes, where in them the entries lie, and the
// edits. What is not edited keeps its bytes, so that getBytes of a document without edits is the parsed text
// again. Not safe for two threads at once. No operation throws; a refused one changes nothing.
class Document
{
public:
    virtual ~Document() = default;

    // Takes over the text of a file, dropping what was there. An empty text is an empty document.
    virtual Outcome parse(std::string bytes) = 0;

    // Calls back for every node in the order of the file, parents before their children. A node is visited
    // once.
    virtual void visit(const std::function<void(const Entry&)>& visitor) const = 0;

    // Changes the value of an entry. Its cost does not depend on the size of the document.
    virtual Outcome set(std::string_view path, const Value& value) = 0;

    // Adds an entry, and the groups that lead to it, where a person would put it: after its siblings.
    virtual Outcome insert(std::string_view path, const Value& value) = 0;

    // Between these two entries are added in the order of a tree, so that what the format asks of one may
    // come after it: the declaration of a prefix in xml, or the elements beside a text. Whether it came is
    // found out at the end, which tells the first entry that lacks it; what was added is still there then.
    virtual void beginRun() {}
    virtual Outcome endRun(std::string& refusedPath);

    // Adds an entry that is not there and all below it, given in the order of a tree with paths relative to
    // it. A refusal tells the refused entry by its position.
    virtual Outcome insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused);

    // Whether entries that insertAll adds are in the order in which they were given.
    virtual bool keepsGivenOrder() const { return false; }

    // Takes out an entry and all below it.
    virtual Outcome remove(std::string_view path) = 0;

    // True when removing this entry gives other entries a new path, as in an array.
    virtual bool removalMovesSiblings(std::string_view path) const = 0;

    // True when removing this entry gives other entries another place in the order, because a group that was
    // begun by it begins elsewhere then.
    virtual bool removalMovesGroups(std::string_view /*path*/) const { return false; }

    // Last, too, for what the document does not hold. Its cost does not depend on the size of the document.
    virtual SiblingPlace placeOf(std::string_view path) const = 0;

    virtual bool contains(std::string_view path) const = 0;

    // The bytes of an entry's value; nothing for an unknown path and for a group. Costs the size of the
    // document.
    virtual std::optional<Span> locate(std::string_view path) const = 0;

    // The value of an entry exactly as the file spells it, for respell of a document of the same type only;
    // nothing for an unknown path and for a group.
    virtual std::optional<std::string> spell(std::string_view path) const = 0;

    // Changes the value of an entry to one that spell gave, byte for byte, so that undo restores a file
    // exactly.
    virtual Outcome respell(std::string_view path, std::string_view spelling) = 0;

    // The text with all edits.
    virtual std::string getBytes() const = 0;
};

} // namespace Repository::Documents
