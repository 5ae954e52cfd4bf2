#pragma once

#include "repository/documents/common/Document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Describes one kind of file: all that others than its documents must know of it. What is not overridden is
// what files of lines need. Immutable; any thread.
class Format
{
public:
    virtual ~Format() = default;

    // By which people and backends call it.
    virtual std::string_view getName() const = 0;

    virtual std::unique_ptr<Document> makeDocument() const = 0;

    // Endings of file names in small letters, separated by blanks: those that say the format for certain, and
    // those that only make it likely. Each ending belongs to one format.
    virtual std::string_view getCertainEndings() const = 0;
    virtual std::string_view getLikelyEndings() const { return {}; }

    // True when a text with that beginning is of this format, whatever the name of its file makes likely.
    virtual bool begins(std::string_view) const { return false; }

    // What a new file holds when there is nothing to write into it.
    virtual std::string getEmptyText() const { return {}; }

    // Whether a document visits its entries in the order of the tree. Files of lines may tell of a group in
    // several places.
    virtual bool isInTreeOrder() const { return false; }

    // The text of a file of its own, written at once; nothing when the entries have to be inserted one by
    // one. Renames those that a file of this format can only hold under another name.
    virtual std::optional<std::string> writeWhole(std::vector<Entry>&) const { return {}; }

    // The entry below which a file holds those of a subtree with that name; empty when it holds them as they
    // are.
    virtual std::string rootOf(const std::vector<Entry>&, std::string_view) const { return {}; }

    // How the names of those entries begin that declare a prefix for all entries around them; empty for none.
    virtual std::string_view getDeclarationStart() const { return {}; }

    // Visits the document's entries under the names that they had before writeWhole.
    virtual void visitImport(const Document& document, const std::function<void(const Entry&)>& visitor) const
    {
        document.visit(visitor);
    }
};

} // namespace Repository::Documents
