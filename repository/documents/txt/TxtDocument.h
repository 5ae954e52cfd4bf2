#pragma once

#include "repository/documents/common/LineDocument.h"
#include "repository/documents/txt/TxtFile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A text file of "path = value" lines between comments and prose; also files of properties and environment
// variables. The second entry of one path is path[2]. Groups exist only with entries.
class TxtDocument : public LineDocument
{
public:
    // The dialect must outlive the document.
    explicit TxtDocument(const Dialect& fileDialect)
        : LineDocument(std::make_unique<TxtFile>(fileDialect)), dialect(fileDialect)
    {
    }

    Outcome insert(std::string_view path, const Value& value) override;
    // Comments stay. The root is not removed.
    Outcome remove(std::string_view path) override;
    SiblingPlace placeOf(std::string_view path) const override;

private:
    std::unique_ptr<LineFile> makeFile() const override { return std::make_unique<TxtFile>(dialect); }

    // What lies between the key and the end of the entry's last line.
    std::string spellingOf(const Statement& entry) const override;
    std::optional<std::string> withSpelling(const Statement& entry, std::string_view spelling) const override;
    std::string explainMisspelling(std::string_view spelling) const override;

    std::vector<std::uint32_t> piecesOf(std::uint32_t node) const override;
    std::optional<NamePlace> nameIn(std::uint32_t node, std::size_t depth,
                                    std::uint32_t piece) const override;
    std::string spellComponent(std::string_view name, const Statement& line,
                               const NamePlace& place) const override;
    std::string spellKey(std::string_view path, std::string_view separator) const;
    std::string spellPath(std::string_view path, Statement::Kind kind) const override;
    Value placeholderOf(const Excerpt&) const override { return {Type::String, std::string("x")}; }
    std::uint32_t pieceOf(std::string_view path, const Value&) const override
    {
        return file->findEntry(path);
    }

    std::uint32_t findPlace(std::string_view path) const;
    std::optional<Statement> draftEntry(std::string_view path, std::uint32_t above, std::string& text) const;
    std::string fillDraft(const Statement& draft, const Value& value, bool belowTag) const;
    Outcome findRemovalFault(const std::vector<std::uint32_t>& going) const;

    const Dialect& dialect;
};

} // namespace Repository::Documents
