#include "repository/operations/BackendTexts.h"

#include "repository/backends/Backend.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/Texts.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

BackendTexts::BackendTexts(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes))
{
}

Outcome BackendTexts::locate(const QString& path, TextPlace& place) const
{
    Outcome outcome = guardMemory([&] {
        const auto backend = backendOf(*store->getTree(), path);
        return backend ? backend->locate(path, place)
                       : Outcome(StatusCode::NotFound, Texts::tr("it is in no file"));
    });
    return outcome.of(Outcome::Operation::Locate, path);
}

Outcome BackendTexts::ask(const QString& name, const std::function<Outcome(const Backend&)>& question) const
{
    return guardMemory([&] {
        const auto backend = findBackend(*store->getTree(), name);
        return backend ? question(*backend) : Refusals::noBackend();
    });
}

Outcome BackendTexts::findAt(const QString& name, int line, int column, QString& path) const
{
    return ask(name, [&](const Backend& backend) { return backend.findAt(line, column, path); });
}

Outcome BackendTexts::getText(const QString& name, BackendText& text) const
{
    return ask(name, [&](const Backend& backend) { return backend.getReadableText(text); });
}

quint64 BackendTexts::getRevision(const QString& name) const
{
    const auto backend = findBackend(*store->getTree(), name);
    return backend ? backend->getRevision() : 0;
}

} // namespace Repository
