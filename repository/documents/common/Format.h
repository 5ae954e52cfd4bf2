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

    // Lower-case file names, separated by blanks, that decide the format whatever they end with; one may have
    // its folder in front, as "folder/name".
    virtual std::string_view getFileNames() const { return {}; }

    // Whether a text that begins like this is of this format, whatever its file name suggests.
    virtual bool begins(std::string_view) const { return false; }

    // Whether a text without any other sign, that of a file whose name says nothing, is of this format. It
    // may be cut off after the end of a line.
    virtual bool resembles(std::string_view) const { return false; }

    // Whether a text is of this format for certain, and says in it what it could not in another one, be it
    // that which its file's ending makes likely. It may be cut off, too.
    virtual bool claims(std::string_view) const { return false; }

    // Whether a text that has no sign of a dialect is rather of this format than of that which its file's
    // ending makes likely. It may be cut off, too.
    virtual bool suits(std::string_view) const { return false; }

    // Whether a text is of another syntax for certain, though its file has one of the likely endings.
    virtual bool rulesOut(std::string_view) const { return false; }

    // The text of a new, empty file.
    virtual std::string getEmptyText() const { return {}; }

    // Whether documents visit entries in tree order; a file of lines may reopen a group.
    virtual bool isInTreeOrder() const { return false; }

    // Whether a text that has these entries may become part of a file as it is written.
    virtual bool takesText(const std::vector<Entry>&) const { return true; }

    // The text of a whole file; nothing when entries must be inserted one by one. Renames entries that this
    // format can only hold under another name.
    virtual std::optional<std::string> writeWhole(std::vector<Entry>&) const { return {}; }

    // The reason for which writeWhole gives nothing, where inserting the entries one by one would change what
    // they mean; empty where it would not.
    virtual std::string explainRefusal(const std::vector<Entry>&) const { return {}; }

    // The entry that a file needs above those of an exported subtree of this name; empty for none.
    virtual std::string rootOf(const std::vector<Entry>&, std::string_view) const { return {}; }

    // How the names of those entries begin that declare a prefix for all entries around them; empty for none.
    virtual std::string_view getDeclarationStart() const { return {}; }

    // A file may hold names in another form than its own, when it has none for them, and say so; EncodedNames
    // tells how. An entry there, and what the text of such a file needs to say so.
    virtual Entry encodedEntry(const Entry& entry) const;
    virtual void declareNames(std::string& text) const;
    virtual bool declaresNames(const Document& document) const;

    // An entry of such a file as it was before; nothing for one that only says so.
    virtual std::optional<Entry> originalOf(const Entry& entry) const;

    // Visits the document's entries under their own names, and before them the root where it is an array.
    void visitImport(const Document& document, const std::function<void(const Entry&)>& visitor) const;

    // How a file tags the type of a new entry with this value, in words for a person; empty where it need
    // not.
    virtual std::string explainTypeTag(const Value& value) const;
};

} // namespace Repository::Documents
