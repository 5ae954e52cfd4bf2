#include "repository/BackendReshape.h"

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
    return backend->edit([&](Documents::Document& text) { return text.parse(std::move(bytes)); });
}

void Backend::Reshape::keepText()
{
    const std::lock_guard lock(backend->mutex);
    if (keptText)
        return;
    keptText = backend->content.getText();
}

void Backend::Reshape::restoreText()
{
    if (keptText && replaceText(*std::move(keptText)).isEmpty())
        keptText.reset();
}

} // namespace Repository
