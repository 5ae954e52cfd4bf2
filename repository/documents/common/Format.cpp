#include "repository/documents/common/Format.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/common/TypeTag.h"

namespace Repository::Documents {

std::string Format::explainTypeTag(const Value& value) const
{
    const auto document = makeDocument();
    if (!document->insert("name", value).ok())
        return {};
    const std::string text = document->getBytes();
    return readTypeTag(text.substr(0, text.find_first_of("\r\n")))
               ? Reason::tr("The file notes its type in a comment line above it, as in \"# @type ...\".")
               : std::string();
}

Entry Format::encodedEntry(const Entry& entry) const
{
    return EncodedNames::toLines(entry);
}

void Format::declareNames(std::string& text) const
{
    text.insert(0, EncodedNames::lineOf(text));
}

bool Format::declaresNames(const Document& document) const
{
    return EncodedNames::areDeclaredInLines(document);
}

std::optional<Entry> Format::originalOf(const Entry& entry) const
{
    return EncodedNames::fromLines(entry);
}

void Format::visitImport(const Document& document, const std::function<void(const Entry&)>& visitor) const
{
    if (document.isArray({}) == true && !document.spell({}))
        visitor({{}, Value(), true});
    if (!declaresNames(document)) {
        document.visit(visitor);
        return;
    }
    document.visit([&](const Entry& entry) {
        if (const auto original = originalOf(entry))
            visitor(*original);
    });
}

} // namespace Repository::Documents
