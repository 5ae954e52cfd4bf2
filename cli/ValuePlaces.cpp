#include "cli/ValuePlaces.h"

namespace CommandLine {

ValuePlaces::FilePosition ValuePlaces::of(const QString& fullPath)
{
    using FrameworkCore::AppConfig::Interfaces::TextPlace;
    auto& repository = session.getRepository();
    const auto node = repository.getTreeInterface()->getNodeInformation(fullPath);
    if (node.isAttribute && !node.backend.isEmpty()) {
        const File& file = fileOf(node.backend);
        const auto known = file.positions.constFind(fullPath);
        if (known != file.positions.constEnd())
            return *known;
    }
    TextPlace place;
    return repository.getTextInterface()->locate(fullPath, place).ok() ? place.position : FilePosition();
}

const ValuePlaces::File& ValuePlaces::fileOf(const QString& backend)
{
    const auto [place, isNew] = files.try_emplace(backend.toStdString());
    File& file = place->second;
    FrameworkCore::AppConfig::Interfaces::BackendText whole;
    auto& repository = session.getRepository();
    if (!isNew || !repository.getTextInterface()->getText(backend, whole).ok())
        return file;
    file.name = repository.getBackendInterface()->getBackendInformation(backend)->getBackendLocation();
    int line = 1;
    int begin = 0; // of the line
    int at = 0;
    for (const auto& value : whole.values) {
        for (; at < value.offset; ++at) {
            const QChar next = whole.text[at];
            const bool isBreak =
                next == QLatin1Char('\n') ||
                (next == QLatin1Char('\r') && whole.text.mid(at + 1, 1) != QLatin1String("\n"));
            line += isBreak ? 1 : 0;
            begin = isBreak ? at + 1 : begin;
        }
        const int column = whole.text.mid(begin, value.offset - begin).toUcs4().size() + 1;
        file.positions.insert(value.path, {file.name, line, column});
    }
    return file;
}

} // namespace CommandLine
