#include "repository/BackendReshape.h"

#include "repository/MemoryGuard.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Backend::Reshape::Reshape(Backend& reshapedBackend) : backend(reshapedBackend.shared_from_this())
{
    const std::lock_guard lock(backend->mutex);
    backend->reshaped = true;
}

Backend::Reshape::~Reshape()
{
    const std::lock_guard lock(backend->mutex);
    backend->reshaped = false;
}

Outcome Backend::Reshape::set(const QString& path, const FrameworkCore::Values::Value& value)
{
    const std::lock_guard lock(backend->mutex);
    return backend->edit([&](Documents::Document& text) { return text.set(backend->relative(path), value); });
}

Outcome Backend::Reshape::respell(const QString& path, const std::string& spelling)
{
    const std::lock_guard lock(backend->mutex);
    return backend->edit(
        [&](Documents::Document& text) { return text.respell(backend->relative(path), spelling); });
}

Outcome Backend::Reshape::replaceText(std::string bytes)
{
    const std::lock_guard lock(backend->mutex);
    const Outcome outcome = backend->checkOpen();
    return outcome.ok() ? backend->outcomeOf(backend->content.replaceText(std::move(bytes))) : outcome;
}

void Backend::Reshape::keepText()
{
    const std::lock_guard lock(backend->mutex);
    if (keptText)
        return;
    keptText = backend->content.getText();
}

void Backend::Reshape::restoreText() noexcept
{
    if (guardMemory([this] { return keptText ? replaceText(*keptText) : Outcome(); }).ok())
        keptText.reset();
}

} // namespace Repository
