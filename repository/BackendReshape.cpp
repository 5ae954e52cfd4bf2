#include "repository/BackendReshape.h"

#include "repository/MemoryGuard.h"

namespace Repository {

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

QString Backend::Reshape::set(const QString& path, const FrameworkCore::Values::Value& value)
{
    const std::lock_guard lock(backend->mutex);
    return backend->edit([&](Documents::Document& text) { return text.set(backend->relative(path), value); });
}

QString Backend::Reshape::respell(const QString& path, const std::string& spelling)
{
    const std::lock_guard lock(backend->mutex);
    return backend->edit(
        [&](Documents::Document& text) { return text.respell(backend->relative(path), spelling); });
}

QString Backend::Reshape::replaceText(std::string bytes)
{
    const std::lock_guard lock(backend->mutex);
    const QString refusal = backend->closedText();
    return refusal.isEmpty() ? QString::fromStdString(backend->content.replaceText(std::move(bytes)).error)
                             : refusal;
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
    const auto restore = [this] { return keptText ? replaceText(*keptText) : QString(); };
    const QString refusal = guardMemory(restore, [](const QString& reason) { return reason; });
    if (refusal.isEmpty())
        keptText.reset();
}

} // namespace Repository
