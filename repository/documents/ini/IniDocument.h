#pragma once

#include "repository/documents/common/LineDocument.h"
#include "repository/documents/ini/IniFile.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

class IniBraces;

// An ini file of a dialect. The name of a section gives the path of its entries; keys before the first
// section are at the root. The second key of one name in a section is key[2], the second section name[2]. A
// key without separator is null, or true where the dialect has it so.
class IniDocument : public LineDocument
{
public:
    // The dialect must outlive the document.
    explicit IniDocument(const Dialect& fileDialect)
        : LineDocument(std::make_unique<IniFile>(fileDialect)), dialect(fileDialect)
    {
    }

    Outcome insert(std::string_view path, const Value& value) override;
    // Keeps comments above, and drops those between the entries of a section. The root stays.
    Outcome remove(std::string_view path) override;
    std::optional<Outcome> rename(std::string_view path, std::string_view name) override;
    SiblingPlace placeOf(std::string_view path) const override;

private:
    std::unique_ptr<LineFile> makeFile() const override { return std::make_unique<IniFile>(dialect); }

    // All lines of the entry, without the tags of its type.
    std::string spellingOf(const Statement& entry) const override { return std::string(entry.lines()); }
    std::optional<std::string> withSpelling(const Statement& entry, std::string_view spelling) const override;
    std::string explainMisspelling(std::string_view spelling) const override;

    std::vector<std::uint32_t> piecesOf(std::uint32_t node) const override;
    std::optional<NamePlace> nameIn(std::uint32_t node, std::size_t depth,
                                    std::uint32_t piece) const override;
    std::string spellComponent(std::string_view name, const Statement& line,
                               const NamePlace& place) const override;
    std::string spellKey(std::string_view name) const;
    std::string spellPath(std::string_view path, Statement::Kind kind) const override;
    Value placeholderOf(const Excerpt& excerpt) const override;
    std::uint32_t pieceOf(std::string_view path, const Value& placeholder) const override;

    bool isOfSection(std::uint32_t node) const;
    using PathChange = std::function<std::string(std::string_view)>; // of a value; empty for one left out
    Outcome editBraces(const std::function<Outcome(IniBraces&)>& edit, const PathChange& before,
                       const PathChange& after);

    // The document does not change by it.
    IniFile& getFile() const { return static_cast<IniFile&>(*file); }

    const Dialect& dialect;
};

} // namespace Repository::Documents
