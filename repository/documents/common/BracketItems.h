#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// The elements of an array or the members of a table, as they lie between its brackets with commas after them
// and comments that begin with "#", to be edited there: a new one looks like its neighbours, a removed one
// takes its line along, with the comment on it.
class BracketItems
{
public:
    struct Item
    {
        std::size_t begin;
        std::size_t end;
        std::size_t comma; // npos after the last one, mostly
    };

    struct Edit
    {
        std::size_t begin;
        std::size_t end;
        std::string text;
    };

    // The text begins with the opening bracket and ends with the closing one. In one of one line, no line is
    // added, and blanks are between the brackets and what is in them.
    BracketItems(std::string_view bracketed, std::string_view fileLineEnd, std::vector<Item> parts,
                 bool hasOneLine)
        : text(bracketed), lineEnd(fileLineEnd), items(std::move(parts)), isOneLine(hasOneLine)
    {
    }

    std::size_t count() const { return items.size(); }
    std::string_view item(std::size_t index) const;
    const std::vector<Item>& getItems() const { return items; }

    // The comments that go with an item that has lines of its own: the one after it, with the blanks before
    // that, and the lines right above it; empty without.
    std::string_view commentBehind(std::size_t index) const;
    std::string_view commentsAbove(std::size_t index) const;
    std::string indentationOf(std::size_t index) const;

    // The edits to apply to the text; one that inserts or removes must be the only one of its kind. Comments
    // come behind what is inserted, and in lines above it, where it gets lines of its own.
    void replace(std::size_t index, std::string replacement);
    void insert(std::size_t index, const std::vector<std::string>& inserted, std::string_view comment = {},
                std::string_view above = {});
    void remove(std::size_t from, std::size_t count, bool withCommentsAbove = false);

    // Whether a new item gets a line of its own, on which a comment may go after it.
    bool insertsLines(std::size_t index) const
    {
        return !items.empty() && !isOneLine && beginsLine(index == 0 ? 0 : index - 1);
    }

    // Gives an item another index. Of items on lines of their own, the comments right above and on the line
    // go along; any other comment stays where it is.
    void move(std::size_t from, std::size_t to);

    // In the order of the text.
    std::vector<Edit> getEdits() const;
    std::string apply() const;

private:
    static constexpr std::size_t npos = std::string_view::npos;

    // What lies on the lines of an item besides itself and the comma after it.
    struct Surroundings
    {
        std::size_t above; // where the comments that are right above it begin
        std::size_t tail;  // after the comma
        std::size_t end;   // of its line, without the line end
    };

    std::optional<Surroundings> surroundingsOf(std::size_t index) const;
    std::size_t lineTail(std::size_t at) const;
    bool hasCommentBeforeComma(std::size_t index) const;
    bool beginsLine(std::size_t index) const;
    std::string separator() const;
    void fill(const std::vector<std::string>& inserted);
    void insertLines(std::size_t index, const std::vector<std::string>& inserted, std::string_view comment,
                     std::string_view above);
    void insertInLine(std::size_t index, const std::vector<std::string>& inserted);
    void removeInLine(std::size_t from, std::size_t last);
    void removeLines(std::size_t from, std::size_t last, bool withCommentsAbove);

    std::string_view text;
    std::string_view lineEnd;
    std::vector<Item> items;
    bool isOneLine;
    std::vector<Edit> edits;
};

} // namespace Repository::Documents
