#pragma once

#include "repository/documents/common/TextMarks.h"
#include "repository/documents/common/Values.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

class TextEncoding;

// The outcome of an operation on a document; a success has no error text.
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

// At a byte of a text. Lines end at "\n", "\r\n" or "\r"; a byte-order mark takes no column.
Outcome outcomeAt(std::string_view text, std::size_t offset, std::string error = {});

// One node of a document as the tree shows it.
struct Entry
{
    std::string path; // below the root: encoded components joined by "."; empty for the root itself
    Value value;      // Type::Group for a node without a value of its own

    std::optional<bool> isArray = {}; // whether a group is an array, where the file says it
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

// What the author of a file has written of an entry and all below it, with the comments that belong to it:
// those right above it, and one after it on its line. It is for documents of the same format.
struct Excerpt
{
    using Range = std::pair<std::size_t, std::size_t>; // begin and end
    using TypeAt = std::pair<std::string, Type>;       // by relative path

    std::string text;
    std::vector<std::size_t> lines; // in it, where the indentation of a line may change
    std::vector<Range> names;       // each place with its name
    std::string indentation;        // of the line on which it begins
    std::string lineEnd;            // of its file
    std::string above;              // lines of comments
    std::string after;              // the comment after it, with the blanks before that
    std::vector<TypeAt> types;      // that the text does not tell
};

// A configuration file as its author left it, with edits: every byte that no edit touches is kept. Not safe
// for two threads at once. No operation throws; a refused one changes nothing.
class Document
{
public:
    virtual ~Document() = default;

    // Takes over the text of a file, dropping what was there. An empty text is an empty document.
    virtual Outcome parse(std::string bytes) = 0;

    // The same with a text that parsed before. Throws std::bad_alloc, as nothing else can be missing.
    void parseAgain(std::string bytes);

    // In the order of the file, parents before children, each node once.
    virtual void visit(const std::function<void(const Entry&)>& visitor) const = 0;

    // Changes the value of an entry. With another type of value a type tag goes where the value is read back
    // without it, and else names the new type; an entry without a tag gets none. Its cost does not depend on
    // the size of the document.
    virtual Outcome set(std::string_view path, const Value& value) = 0;

    // Whether the file says of which type an entry is: by its form, as that of quotes, or by a type tag. Any
    // other type is guessed from the text, and another text may have another.
    virtual bool namesType(std::string_view path) const = 0;

    // Adds an entry and missing groups above it where a person would: after its siblings.
    virtual Outcome insert(std::string_view path, const Value& value) = 0;

    // Between these two, entries come in the order of a tree and may precede what the format requires of
    // them, as the declaration of an xml prefix. endRun checks that and gives the first entry that still
    // lacks something; nothing is rolled back.
    virtual void beginRun() {}
    virtual Outcome endRun(std::string& refusedPath);

    // Adds a new entry and all below it, in the order of a tree with paths relative to it. After a refusal,
    // refused is the index of the refused entry.
    virtual Outcome insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& refused);

    // The same in the place of an entry that is there, of which nothing stays but its place if possible.
    virtual Outcome replaceAll(std::string_view path, const std::vector<Entry>& entries,
                               std::size_t& refused);

    // Whether insertAll keeps the given order.
    virtual bool keepsGivenOrder() const { return false; }

    // Adds an element to an array, with all below it as insertAll does, before the one that has its index so
    // far, or after the last. Nothing is done, and nothing comes back, where the path is not in an array.
    virtual std::optional<Outcome> insertElement(std::string_view /*path*/,
                                                 const std::vector<Entry>& /*entries*/)
    {
        return {};
    }

    // Gives an element another index in the same array, the one it has in the end, as it is written. Nothing
    // for what is not that.
    virtual std::optional<Outcome> moveElement(std::string_view /*path*/, std::string_view /*newPath*/)
    {
        return {};
    }

    // Takes out an entry and all below it, or the element of a list that is an array.
    virtual Outcome remove(std::string_view path) = 0;

    // Gives an entry another last component where it is: of the file nothing changes but the places of the
    // name. Nothing is done, and nothing comes back, where the entry must be moved instead.
    virtual std::optional<Outcome> rename(std::string_view /*path*/, std::string_view /*name*/) { return {}; }

    // Nothing for an entry that can only be copied by its values, like all others of the format.
    virtual std::optional<Excerpt> excerpt(std::string_view /*path*/) const { return {}; }

    // Whether comments in the text of an entry, or behind it on its line, would be lost with it where it is
    // moved by its values, without an excerpt.
    virtual bool hasComments(std::string_view /*path*/) const { return false; }

    // How many tags at or below it give a value a meaning of which its type here tells nothing.
    virtual std::size_t countTags(std::string_view /*path*/) const { return 0; }

    // Adds a new entry, or an element of an array before the one that has its index so far, and all below it
    // as they are written elsewhere; for the empty path, an empty document gets nothing else. False, with the
    // document as it was, where they must be inserted one by one. Whether their values are read alike there,
    // the caller looks.
    virtual bool insertExcerpt(std::string_view /*path*/, const Excerpt& /*excerpt*/) { return false; }

    // As remove; the comments of its excerpt go, too.
    virtual Outcome removeExcerpt(std::string_view path) { return remove(path); }

    // Whether removal renames siblings, as in an array.
    virtual bool removalMovesSiblings(std::string_view path) const = 0;

    // Whether removal reorders other groups, because one that began with this entry now begins elsewhere.
    virtual bool removalMovesGroups(std::string_view /*path*/) const { return false; }

    // Last for an unknown path, too. Its cost does not depend on the size of the document.
    virtual SiblingPlace placeOf(std::string_view path) const = 0;

    virtual bool contains(std::string_view path) const = 0;

    // Whether an entry, or for the empty path all of it, is an array; nothing in a format without any.
    virtual std::optional<bool> isArray(std::string_view /*path*/) const { return {}; }

    // Whose text an entry shows. Aliases and merges of YAML show what is written elsewhere in the file.
    enum class Origin {
        Own,
        Alias,    // that of another entry, until it gets one of its own
        Copy,     // the same, and it comes and goes with the other entry, too
        Reference // its own, which only says what its group shows: it is no value beside that
    };
    virtual Origin originOf(std::string_view /*path*/) const { return Origin::Own; }

    // The path of the entry whose text is shown: that of the entry itself, unless it is an alias or a copy.
    virtual std::string sourceOf(std::string_view path) const { return std::string(path); }

    // The paths of those that show the text of an entry.
    virtual std::vector<std::string> followersOf(std::string_view /*path*/) const { return {}; }

    // Whether an edit of an entry may change more than that entry, since it shows the text of another one or
    // another one shows its text, or more of the text than its value; for the empty path, whether there is
    // any entry of the first kind.
    virtual bool isLinked(std::string_view /*path*/) const { return false; }

    // The value of an entry as the file has it; nothing for an unknown path or a group. Its cost does not
    // depend on the size of the document.
    virtual std::optional<Value> valueAt(std::string_view path) const = 0;

    // The bytes of a value; nothing for an unknown path or a group. Of an element of a list that has no place
    // of its own known, nothing. Costs a walk over the document.
    virtual std::optional<Span> locate(std::string_view path) const = 0;

    // Calls back with the path of every value and its bytes, in the order of visit. Costs one walk for all as
    // long as nothing was edited, and one for each after that.
    using SpanVisitor = std::function<void(const std::string& path, Span span)>;
    virtual void visitSpans(const SpanVisitor& visitor) const;

    // The comment of an entry's excerpt: the lines above it without what indents them, then what follows it
    // on its line. Empty without one.
    virtual std::string comment(std::string_view path) const;

    // Of a text that was parsed, and not edited since.
    virtual TextMarks getMarks() const = 0;

    // What makes the bytes of that text. Without one of its own, they are the same.
    virtual TextEncoding getEncoding() const;

    // The value as the file spells it, for respell of a document of the same format; nothing for an unknown
    // path or a group.
    virtual std::optional<std::string> spell(std::string_view path) const = 0;

    // Restores a spelling byte for byte, as undo does.
    virtual Outcome respell(std::string_view path, std::string_view spelling) = 0;

    // The text with all edits.
    virtual std::string getBytes() const = 0;
};

} // namespace Repository::Documents
