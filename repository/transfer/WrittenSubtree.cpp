#include "repository/transfer/WrittenSubtree.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/WrittenEntries.h"

namespace Repository {

using Documents::Entry;
using FrameworkCore::Values::Type;

WrittenSubtree::WrittenSubtree(const Backend& writer, const QString& path, std::string rootName,
                               const std::vector<Entry>& subtree)
    : writtenType(writer.getDescription().type.toStdString()), name(std::move(rootName)), entries(subtree)
{
    const Documents::Format* const format = Documents::findFormat(writtenType);
    if (!format || !format->takesText(entries))
        return;
    if (writer.getName() == path)
        whole = writer.getBytes();
    else if (!entries.empty())
        addCandidates(writer, path);
}

void WrittenSubtree::addCandidates(const Backend& writer, const QString& path)
{
    const auto add = [&](const std::string& root, const std::string& place, const QString& source) {
        if (auto excerpt = writer.excerpt(source))
            candidates.push_back({root, place, *std::move(excerpt)});
    };
    const std::string root = Documents::findFormat(writtenType)->rootOf(entries, name);
    add(root, root, path);
    const Entry& first = entries.front();
    const std::string top = first.path.substr(0, first.path.find('.'));
    if (root.empty() && !top.empty())
        add(root, top, joinedPath(path, top));
    else if (root.empty() && first.value.type != Type::Group)
        add(name, name, path);
}

std::optional<std::string> WrittenSubtree::textOf(const std::string& type) const
{
    const auto accepted = [&](std::optional<std::string> text) {
        constexpr std::size_t beginning = 16384;
        const bool isOfType =
            text && Documents::recogniseDialect(type, {}, text->substr(0, beginning)) == writtenType;
        return isOfType ? std::move(text) : std::nullopt;
    };
    auto text = accepted(whole);
    for (auto each = candidates.begin(); !text && each != candidates.end(); ++each)
        text = accepted(textWith(*each));
    return text;
}

// With what entries around the subtree declare for it.
std::optional<std::string> WrittenSubtree::textWith(const Candidate& candidate) const
{
    const Documents::Format& format = *Documents::findFormat(writtenType);
    const auto document = format.makeDocument();
    document->beginRun();
    if (!document->insertExcerpt(candidate.place, candidate.excerpt))
        return {};
    const std::string_view declaration = format.getDeclarationStart();
    for (const Entry& entry : entries) {
        if (declaration.empty() || entry.path.compare(0, declaration.size(), declaration) != 0)
            continue;
        const std::string own = Documents::joinPath(candidate.root, entry.path);
        if (!document->contains(own) && !document->insert(own, entry.value).ok())
            return {};
    }
    std::string lacking;
    const bool isAlike = document->endRun(lacking).ok() && !format.declaresNames(*document) &&
                         Documents::holdsEntries(*document, candidate.root, entries);
    return isAlike ? std::optional(document->getBytes()) : std::nullopt;
}

} // namespace Repository
