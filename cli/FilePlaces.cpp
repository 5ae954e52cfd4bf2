#include "cli/FilePlaces.h"

namespace CommandLine {

FilePlaces::Place FilePlaces::of(const Source& source, const QString& fullPath)
{
    auto& repository = session.getRepository();
    const QString backend = repository.getTreeInterface()->getNodeInformation(fullPath).backend;
    const auto information = repository.getBackendInterface()->getBackendInformation(backend);
    if (!information)
        return {source.given};
    const QString file = information->getBackendLocation();
    auto known = files.find(backend);
    if (known == files.end())
        known = files.emplace(backend, DocumentFile::read(file, information->getBackendType())).first;
    const auto [line, column] = known->second.positionOf(fullPath.mid(backend.size() + 1));
    return {source.holds(file) ? source.shownFile(file) : source.given, line, column};
}

} // namespace CommandLine
