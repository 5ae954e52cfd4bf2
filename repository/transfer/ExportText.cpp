#include "repository/transfer/ExportText.h"

#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/EncodedNames.h"

namespace Repository {

using Documents::Entry;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

ExportText::ExportText(std::string documentType, std::string name)
    : type(std::move(documentType)), rootName(std::move(name))
{
}

ExportText::End ExportText::write(std::vector<Entry> entries, TransferProgress& progress)
{
    const Documents::Format& format = *Documents::findFormat(type);
    if (auto whole = format.writeWhole(entries)) {
        text = std::move(*whole);
        return End::Written;
    }
    const auto document = format.makeDocument();
    const End end = fill(*document, format.rootOf(entries, rootName), entries, progress);
    if (end == End::Written)
        text = document->getBytes();
    return end;
}

ExportText::End ExportText::fill(Documents::Document& document, std::string prefix,
                                 const std::vector<Entry>& entries, TransferProgress& progress)
{
    document.beginRun();
    for (const Entry& entry : entries) {
        if (!progress.advance())
            return End::Cancelled;
        const std::string path = prefix.empty() || entry.path.empty()
                                     ? prefix + entry.path
                                     : Documents::joinPath(prefix, entry.path);
        Documents::Outcome outcome = insert(document, path, entry.value);
        const bool isGroup = entry.value.type == Type::Group;
        if (!outcome.ok() && path.empty() && !isGroup) {
            prefix = rootName;
            outcome = insert(document, prefix, entry.value);
        }
        if (!outcome.ok() && !isGroup) {
            refusedPath = entry.path;
            error = outcome.error;
            return End::Refused;
        }
    }
    const Documents::Outcome outcome = document.endRun(refusedPath);
    refusedPath.erase(0, prefix.empty() ? 0 : prefix.size() + 1);
    error = outcome.error;
    return outcome.ok() ? End::Written : End::Refused;
}

Documents::Outcome ExportText::insert(Documents::Document& document, const std::string& path,
                                      const Value& value)
{
    Documents::Outcome outcome = document.insert(path, value);
    if (!outcome.ok() && !path.empty() &&
        document.insert(Documents::EncodedNames::asPlainKeys(path), value).ok())
        outcome = {};
    return outcome;
}

} // namespace Repository
