#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/ini/IniIndex.h"
#include "repository/documents/ini/IniText.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// An ini file. A section's name, split at its dots, is the path of its entries; keys before the first section
// stand at the root; the second key of one name in a section is key[2], the second section of one name
// name[2]. A key without a separator is null. The file is a list of pieces that keep their bytes; an edit
// gives one piece a text of its own.
class IniDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(std::string_view path, const FrameworkCore::Values::Value& value) override;
    // Comments above what goes stay; comments between a section's entries go with the section. The root is
    // not removed.
    Outcome remove(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    bool removalMovesGroups(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    // All lines of the entry, without the marks of its type.
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override;

private:
    // Text of our own making is not asked whether it is text at all.
    Outcome load(std::string bytes, bool isOwn);
    Outcome reload(std::string bytes, bool isOwn);
    void learnStyle(const IniLine& entry);

    // Gives an entry another text, unless it would change how the lines around it are read.
    Outcome replace(IniPiece& piece, std::string_view text);

    // Adds a piece; those that are no gaps are chained behind the one above, none being the front.
    IniPiece& add(IniPiece* before, IniPiece* above, const IniLine& line);
    IniPiece& addOwn(IniPiece* before, IniPiece* above, std::string text);
    void take(IniPiece& piece);
    IniPiece* chainedBehind(const IniPiece* above) const;
    IniGap gapBelow(const IniPiece& piece) const;
    bool endsBlank() const;

    Outcome insertSection(std::string_view path);
    Outcome insertEntry(std::string_view path, const FrameworkCore::Values::Value& value);
    // Texts of pieces that are to be added; empty, with the reason, where ini has none.
    // The first header of a file decides where its comments stand.
    std::string headerText(std::string_view path, std::string& reason);
    std::string entryText(std::string_view key, const FrameworkCore::Values::Value& value,
                          const IniPiece* sibling, std::string& reason) const;
    IniItem& placeSection(std::string_view path, const std::string& header);
    IniPiece& placeEntry(IniPiece& above, std::string text);
    IniPiece& placeFirstAtRoot(std::string text);

    // Whether the entries, without those that go, mean the same when comments stand elsewhere.
    bool allowsComments(IniComments comments) const;
    Outcome checkRemoval(const IniItem& item, const std::vector<IniItem*>& going, IniComments comments) const;
    bool frontCanGo(const IniItem& item) const;
    bool entryCanGo(const IniPiece& entry) const;
    void takeEntry(IniItem& item);
    bool sectionsCanGo(const std::vector<IniItem*>& going) const;
    void takeSections(const std::vector<IniItem*>& going);

    std::unique_ptr<const std::string> fileText = std::make_unique<const std::string>();
    TextEncoding encoding;
    IniPieces pieces;
    std::map<std::size_t, const IniPiece*> edited; // by their place in the file; unused once reshaped
    bool reshaped = false;                         // pieces were added or taken out
    IniPiece* chainFront = nullptr;                // not owned, as the other pointers
    IniPiece* chainEnd = nullptr;
    IniPiece* firstHeader = nullptr; // of those that are not indented
    IniIndex index;
    IniStyle style;
    bool styleKnown = false;
    mutable std::uint32_t visits = 0;
};

} // namespace Repository::Documents
