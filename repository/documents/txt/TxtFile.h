#pragma once

#include "repository/documents/common/LineFile.h"
#include "repository/documents/txt/TxtDialect.h"

namespace Repository::Documents {

// Longer paths are refused, since the tree has a node for each of their components.
constexpr std::size_t deepestTxtPath = 1024;

// The text of a txt file.
class TxtFile : public LineFile
{
public:
    explicit TxtFile(const Dialect& fileDialect) : dialect(fileDialect), lineDialect(fileDialect)
    {
        style.separator = dialect.separator;
    }

    const LineDialect& getDialect() const override { return lineDialect; }

private:
    // The group of the entry that was taken up last.
    struct Group
    {
        std::string_view path;
        std::uint32_t id = LineIndex::root;
    };

    Outcome readStatements(bool isOwn) override;
    Outcome takeUp(const Statement& line, std::uint32_t piece, Group& latest);
    Statement scanOwn(std::string_view text) const override;
    std::string findClash(std::uint32_t piece, const Statement& line) const override;

    const Dialect& dialect;
    const TxtDialect lineDialect;
};

} // namespace Repository::Documents
