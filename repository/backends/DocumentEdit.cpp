#include "repository/backends/DocumentEdit.h"

#include "repository/common/MemoryGuard.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

DocumentEdit::DocumentEdit(Backend& editedBackend, bool canRollBack)
    : backend(editedBackend.shared_from_this()), hasRollback(canRollBack),
      wasLinked(backend->isLinked(backend->getName()))
{
    backend->beginEdit();
}

Backend& DocumentEdit::toChange()
{
    if (hasRollback && !before)
        before = backend->getBytes();
    return *backend;
}

void DocumentEdit::rollBack() noexcept
{
    if (guardMemory([this] { return before ? backend->replaceText(*before) : Outcome(); }).ok())
        before.reset();
}

} // namespace Repository
