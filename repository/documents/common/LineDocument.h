#pragma once

#include "repository/documents/common/LineFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A file of lines as a document: what the formats of lines do in the same way.
class LineDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override { file->visit(visitor); }
    Outcome set(std::string_view path, const Value& value) override;
    bool namesType(std::string_view path) const override;
    bool removalMovesSiblings(std::string_view path) const override;
    bool removalMovesGroups(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->index.find(path) != none; }
    std::optional<Value> valueAt(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    void visitSpans(const SpanVisitor& visitor) const override { file->visitSpans(visitor); }
    TextMarks getMarks() const override { return file->getMarks(); }
    TextEncoding getEncoding() const override { return file->getEncoding(); }
    bool hasComments(std::string_view path) const override;
    std::string comment(std::string_view path) const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    std::optional<Excerpt> excerpt(std::string_view path) const override;
    bool insertExcerpt(std::string_view path, const Excerpt& excerpt) override;
    Outcome removeExcerpt(std::string_view path) override;
    std::string getBytes() const override { return file->getBytes(); }

protected:
    static constexpr std::uint32_t none = HashIndex::none;

    explicit LineDocument(std::unique_ptr<LineFile> emptyFile) : file(std::move(emptyFile)) {}

    Outcome reload(std::string bytes, bool isOwn);

    // Of all entries with a value, under the paths that the change gives them; without those that get none.
    std::uint64_t hashOf(const std::function<std::string(std::string_view)>& change) const;

    // The path of an entry when another one has gone: later siblings of its name move up.
    static std::string pathWithout(std::string_view gone, std::string_view path);

    // Where the path of a node, or as a key the last component of it, is in a statement.
    struct NamePlace
    {
        std::size_t begin = 0;
        std::size_t last = 0; // component of the path
        std::size_t end = 0;
    };

    // The place of the first components of a key that is a path; one more than the given depth.
    static std::optional<NamePlace> placeInPath(const Statement& line, std::size_t depth);

    std::unique_ptr<LineFile> file;

private:
    // The pieces that make a node and all below it, in the order of the file and but for trivia around them.
    virtual std::vector<std::uint32_t> piecesOf(std::uint32_t node) const = 0;

    // Where the name of a node is in one of these pieces; nothing where it is in none.
    virtual std::optional<NamePlace> nameIn(std::uint32_t node, std::size_t depth,
                                            std::uint32_t piece) const = 0;

    // How a line spells another last component at that place, and a line of this kind a whole path.
    virtual std::string spellComponent(std::string_view name, const Statement& line,
                                       const NamePlace& place) const = 0;
    virtual std::string spellPath(std::string_view path, Statement::Kind kind) const = 0;

    // What is to be inserted at the place of an excerpt, and the piece that it becomes.
    virtual Value placeholderOf(const Excerpt& excerpt) const = 0;
    virtual std::uint32_t pieceOf(std::string_view path, const Value& placeholder) const = 0;

    // What belongs to a node: a piece, or some of the blank lines and comments after one, which none is
    // before.
    struct Part
    {
        std::uint32_t piece;
        bool isTrivia = false;
        std::size_t begin = 0;
        std::size_t end = 0;
        bool isApart = false; // from what of the node is above
    };
    std::vector<Part> partsOf(std::uint32_t node) const;
    std::string_view textOf(const Part& part, std::string& trivia) const;
    Outcome renameAll(std::uint32_t node, std::string_view path, std::string_view name);
    bool becomeExcerpt(const Excerpt& excerpt);

    virtual std::unique_ptr<LineFile> makeFile() const = 0;

    // The spelling of an entry, and its text with another spelling; nothing where that does not spell a value
    // of it.
    virtual std::string spellingOf(const Statement& entry) const = 0;
    virtual std::optional<std::string> withSpelling(const Statement& entry,
                                                    std::string_view spelling) const = 0;
    virtual std::string explainMisspelling(std::string_view spelling) const = 0;

    Outcome refuseWithoutValue(std::string_view path) const;
};

} // namespace Repository::Documents
