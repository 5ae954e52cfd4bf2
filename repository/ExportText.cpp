#include "repository/ExportText.h"

#include "repository/documents/Formats.h"
#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/common/KeyText.h"
#include "repository/documents/json/JsonText.h"

#include <algorithm>

namespace Repository {

using Documents::Entry;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

bool lieInOneElement(const std::vector<Entry>& entries)
{
    const std::string first = entries.empty() ? std::string() : entries.front().path;
    const std::string_view top = std::string_view(first).substr(0, first.find('.'));
    return !top.empty() && std::all_of(entries.begin(), entries.end(), [top](const Entry& entry) {
        const std::string_view path = entry.path;
        return path.substr(0, path.find('.')) == top && !Documents::EncodedNames::areNeededBy(top);
    });
}

} // namespace

ExportText::ExportText(std::string documentType, std::string name)
    : type(std::move(documentType)), rootName(std::move(name))
{
}

ExportText::End ExportText::write(std::vector<Entry> entries, TransferProgress& progress)
{
    if (type == "json") {
        const auto isXml = [](const Entry& entry) {
            return Documents::EncodedNames::areNeededBy(entry.path);
        };
        if (std::any_of(entries.begin(), entries.end(), isXml)) {
            for (Entry& entry : entries)
                entry.path = Documents::EncodedNames::toDocument(entry.path);
            entries.push_back({std::string(Documents::EncodedNames::member),
                               {Type::String, std::string(Documents::EncodedNames::form)}});
        }
        if (auto whole = Documents::JsonText::write(entries, {})) {
            text = std::move(whole->text) + '\n';
            return End::Written;
        }
    }
    const auto document = Documents::makeDocument(type);
    const End end = fill(*document, entries, progress);
    if (end == End::Written)
        text = document->getBytes();
    return end;
}

ExportText::End ExportText::fill(Documents::Document& document, const std::vector<Entry>& entries,
                                 TransferProgress& progress)
{
    std::string prefix = type == "xml" && !lieInOneElement(entries) ? elementName() : std::string();
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

// The element that holds what a file of xml cannot hold side by side.
std::string ExportText::elementName() const
{
    const std::string_view name = Documents::splitNumber(rootName).name;
    return std::string(name.substr(std::min(name.find_first_not_of("@#"), name.size())));
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
