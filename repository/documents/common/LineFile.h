#pragma once

#include "repository/documents/common/LineDialect.h"
#include "repository/documents/common/LineIndex.h"
#include "repository/documents/common/LinePieces.h"
#include "repository/documents/common/TextEncoding.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The text of a file of lines with its edits: pieces that keep their bytes until edited, and the nodes that
// they make. Not movable, since its parts refer to each other.
class LineFile
{
public:
    static constexpr std::uint32_t none = HashIndex::none;

    LineFile() = default;
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;
    virtual ~LineFile() = default;

    virtual const LineDialect& getDialect() const = 0;

    // Reads the bytes of a file. Text of our own making is not asked whether it is text at all.
    Outcome load(std::string bytes, bool isOwn);

    // The piece of an entry; none for an unknown path and for a group.
    std::uint32_t findEntry(std::string_view path) const;

    // Calls back with each node below the root, parents first, as the file comes to them.
    void walkNodes(const std::function<void(std::uint32_t)>& callback) const;

    // Brings the siblings in the index into the order of the file.
    void restoreOrder();

    void visit(const std::function<void(const Entry&)>& visitor) const;
    void visitSpans(const Document::SpanVisitor& visitor) const;
    TextMarks getMarks() const; // as long as nothing was edited
    TextEncoding getEncoding() const { return encoding; }

    std::string getBytes() const;
    Span locateValue(std::uint32_t piece) const;

    // Gives an entry another text, or its original one, unless that changes how the lines around it are read.
    Outcome replace(std::uint32_t piece, std::string_view text);

    // What is between a new key of some size below a piece, which is an entry, and its value.
    std::string separatorBelow(std::uint32_t piece, std::size_t keySize) const;

    // Why the file's encoding cannot hold a piece of text that an edit adds; empty when it can.
    std::string findRefusal(std::string_view text) const;

    // Why the file's program takes no line with such a name; empty when it does.
    virtual std::string explainName(std::string_view) const { return {}; }

    // Puts a text in the place of a piece, for good. Only what a plain scan of it gives is taken up.
    void overwrite(std::uint32_t piece, std::string text);

    // Why a text cannot come in the place of a piece that is an entry; empty when it can.
    std::string explainOverwriting(std::uint32_t piece, std::string_view text) const;

    // Adds a piece before another, or at the end for none; unless trivia, it is chained below the one above.
    std::uint32_t add(std::uint32_t before, std::uint32_t above, const Statement& line);
    std::uint32_t addOwn(std::uint32_t before, std::uint32_t above, std::string text);
    void takePiece(std::uint32_t piece);

    // The blank lines and comments between a piece and the one chained below it, and the part of them that
    // belongs to the section which ends with the piece; none being before the first.
    std::string triviaAfter(std::uint32_t piece) const;
    std::size_t sectionEndAfter(std::uint32_t piece) const;
    void takeTrivia(std::uint32_t piece, std::size_t begin, std::size_t end);

    // Takes out an entry; the later ones of the same path move up by one.
    void takeEntry(std::uint32_t node);

    LinePieces pieces;
    LineIndex index;
    LineStyle style;
    TextEncoding encoding;

protected:
    const std::string& getText() const { return original; }
    Outcome failAt(const char* at, std::string reason) const
    {
        return outcomeAt(original, std::size_t(at - original.data()), std::move(reason));
    }

private:
    virtual Outcome readStatements(bool isOwn) = 0;

    // The text as one statement, of whatever kind it is.
    virtual Statement scanOwn(std::string_view text) const = 0;

    // Why the statement would change how lines around the piece are read; empty when it would not.
    virtual std::string findClash(std::uint32_t piece, const Statement& line) const = 0;

    bool needsLineEnd(std::string_view above, std::string_view next) const;

    // As walkNodes, with the path.
    void walkPaths(const std::function<void(std::string& path, const LineNode& node)>& callback) const;

    // The value of a piece that is an entry and begins at the byte.
    Span valueSpan(std::uint32_t piece, std::size_t offset) const;

    // Calls back with each piece and the byte at which it begins, until that gives false.
    void walkPieces(const std::function<bool(std::uint32_t piece, std::size_t offset)>& callback) const;

    std::string original;                        // as it was read
    std::map<std::size_t, std::uint32_t> edited; // pieces by their place in the text; unused once reshaped
    bool reshaped = false;                       // pieces were added or taken out
    mutable std::uint32_t visits = 0;
};

} // namespace Repository::Documents
