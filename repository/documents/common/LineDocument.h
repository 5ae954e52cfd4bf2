#pragma once

#include "repository/documents/common/LineFile.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A file of lines as a document: what the formats of lines do in the same way.
class LineDocument : public Document
{
public:
    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override { file->visit(visitor); }
    Outcome set(std::string_view path, const Value& value) override;
    bool removalMovesSiblings(std::string_view path) const override;
    bool removalMovesGroups(std::string_view path) const override;
    bool contains(std::string_view path) const override { return file->index.find(path) != none; }
    std::optional<Span> locate(std::string_view path) const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override { return file->getBytes(); }

protected:
    static constexpr std::uint32_t none = HashIndex::none;

    explicit LineDocument(std::unique_ptr<LineFile> emptyFile) : file(std::move(emptyFile)) {}

    Outcome reload(std::string bytes, bool isOwn);

    std::unique_ptr<LineFile> file;

private:
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
