#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/txt/TxtIndex.h"
#include "repository/documents/txt/TxtText.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Longer paths are refused, since the tree has a node for each of their components.
constexpr std::size_t deepestTxtPath = 1024;

// A text file with one "path = value" a line, between comments and prose that stay as they are; files of
// properties and of environment variables too. The second entry of one path is path[2]. Groups are only what
// leads to entries. The file is a list of pieces that keep their bytes; an edit gives one piece a text of its
// own.
class TxtDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(std::string_view path, const FrameworkCore::Values::Value& value) override;
    // Comments stay. The root is not removed.
    Outcome remove(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    bool removalMovesGroups(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override;
    std::string getBytes() const override;
    std::optional<Span> locate(std::string_view path) const override;
    // What stands between the key and the end of the entry's last line.
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;

private:
    static constexpr std::uint32_t none = TxtIndex::none;

    struct Piece
    {
        TxtLine line;                     // a view into the file's text, or into own
        std::string_view original;        // what the file holds here; empty for a piece that was added
        std::unique_ptr<std::string> own; // the text of a piece that was added or edited
        std::uint32_t node = none;        // none for a piece without entry
        std::uint32_t above = none;
        std::uint32_t below = none;
        bool going = false; // while a removal is being tried
    };

    Outcome load(std::string bytes);
    // The group of the entry that was taken up last.
    struct Group
    {
        std::string_view path;
        std::uint32_t id = TxtIndex::root;
    };
    Outcome takeUp(const TxtLine& line, std::uint32_t piece, Group& latest);
    void learnStyle(const TxtLine& entry);

    std::uint32_t addPiece(std::uint32_t above, const TxtLine& line);
    void takePiece(std::uint32_t id);
    Piece* findEntry(std::string_view path);
    const Piece* findEntry(std::string_view path) const;
    // Calls back with each node below the root, parents first, as the file comes to them.
    void walkNodes(const std::function<void(std::uint32_t)>& callback) const;
    // Calls back with each text of the file in turn and the piece it belongs to, none for a line end that is
    // missing in the file; until the callback returns false.
    template <typename Callback>
    void walkTexts(const Callback& callback) const;

    // Gives an entry another text, its original one too, unless that changes more than the entry.
    Outcome replace(Piece& piece, std::string text);

    std::uint32_t findPlace(std::string_view path) const;
    std::optional<TxtLine> draftEntry(std::string_view path, std::uint32_t above, std::string& text) const;
    std::string fillDraft(const TxtLine& draft, const FrameworkCore::Values::Value& value,
                          bool belowMark) const;

    std::uint32_t nextEntry(std::uint32_t piece, std::uint32_t Piece::*direction) const;
    void restoreOrder();
    Outcome findRemovalFault(const std::vector<std::uint32_t>& going) const;
    void dropNumbered(std::uint32_t node);

    std::unique_ptr<const std::string> fileText = std::make_unique<const std::string>();
    TextEncoding encoding;
    std::vector<Piece> pieces;
    std::vector<std::uint32_t> unused; // pieces that were taken out
    std::uint32_t front = none;
    std::uint32_t back = none;
    TxtIndex index;
    TxtStyle style;
    bool styleKnown = false;
    mutable std::uint32_t visits = 0;
};

} // namespace Repository::Documents
