#pragma once

#include "repository/documents/common/Document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A file format, as others than its documents see it. Defaults suit formats of lines. Immutable; any thread.
class Format
{
public:
    virtual ~Format() = default;

    // For people and backends.
    virtual std::string_view getName() const = 0;

    virtual std::unique_ptr<Document> makeDocument() const = 0;

    // Lower-case file name endings, separated by blanks, that decide the format or only suggest it. Each
    // belongs to one format.
    virtual std::string_view getCertainEndings() const = 0;
    virtual std::string_view getLikelyEndings() const { return {}; }

    // Whether a text that begins like this is of this format, whatever its file name suggests.
    virtual bool begins(std::string_view) const { return false; }

    // Whether a text without any other sign, that of a file whose name says nothing, is of this format. It
    // may be cut off after the end of a line.
    virtual bool resembles(std::string_view) const { return false; }

    // The text of a new, empty file.
    virtual std::string getEmptyText() const { return {}; }

    // Whether documents visit entries in tree order; a file of lines may reopen a group.
    virtual bool isInTreeOrder() const { return false; }

    // The text of a whole file; nothing when entries must be inserted one by one. Renames entries that this
    // format can only hold under another name.
    virtual std::optional<std::string> writeWhole(std::vector<Entry>&) const { return {}; }

    // The entry that a file needs above those of an exported subtree of this name; empty for none.
    virtual std::string rootOf(const std::vector<Entry>&, std::string_view) const { return {}; }

    // How the names of those entries begin that declare a prefix for all entries around them; empty for none.
    virtual std::string_view getDeclarationStart() const { return {}; }

    // Visits the document's entries under the names that they had before writeWhole.
    virtual void visitImport(const Document& document, const std::function<void(const Entry&)>& visitor) const
    {
        document.visit(visitor);
    }

    // How a file tags the type of a new entry with this value, in words for a person; empty where it need
    // not.
    virtual std::string explainTypeTag(const Value& value) const;
};

} // namespace Repository::Documents
