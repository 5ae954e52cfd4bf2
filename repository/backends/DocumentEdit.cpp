#include "repository/backends/DocumentEdit.h"

#include "repository/common/MemoryGuard.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

DocumentEdit::DocumentEdit(Backend& editedBackend) : backend(editedBackend.shared_from_this())
{
    backend->beginEdit();
}

DocumentEdit::~DocumentEdit()
{
    backend->endEdit();
}

Outcome DocumentEdit::set(const QString& path, const FrameworkCore::Values::Value& value)
{
    return backend->write(path, value);
}

Outcome DocumentEdit::respell(const QString& path, const std::string& spelling)
{
    return backend->respell(path, spelling);
}

Outcome DocumentEdit::replaceText(std::string bytes)
{
    return backend->replaceText(std::move(bytes));
}

void DocumentEdit::setRollbackPoint()
{
    if (!before)
        before = backend->getBytes();
}

void DocumentEdit::rollBack() noexcept
{
    if (guardMemory([this] { return before ? replaceText(*before) : Outcome(); }).ok())
        before.reset();
}

} // namespace Repository
