#include "repository/backends/DocumentEdit.h"

#include "repository/common/MemoryGuard.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

DocumentEdit::DocumentEdit(Backend& editedBackend, bool canRollBack)
    : backend(editedBackend.shared_from_this()), hasRollback(canRollBack)
{
    backend->beginEdit();
}

DocumentEdit::~DocumentEdit()
{
    backend->endEdit();
}

Backend& DocumentEdit::toChange()
{
    if (hasRollback && !before)
        before = backend->getBytes();
    return *backend;
}

Outcome DocumentEdit::set(const QString& path, const Value& value)
{
    return toChange().write(path, value);
}

Outcome DocumentEdit::insert(const QString& path, const Value& value)
{
    return toChange().insert(path, value);
}

Outcome DocumentEdit::remove(const QString& path)
{
    return toChange().remove(path);
}

Outcome DocumentEdit::respell(const QString& path, const std::string& spelling)
{
    return toChange().respell(path, spelling);
}

Outcome DocumentEdit::replaceText(std::string bytes)
{
    return toChange().replaceText(std::move(bytes));
}

Outcome DocumentEdit::insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                                std::size_t& refused)
{
    return toChange().insertAll(path, entries, refused);
}

void DocumentEdit::beginBatch()
{
    toChange().beginBatch();
}

Outcome DocumentEdit::endBatch(QString& refusedPath)
{
    return backend->endBatch(refusedPath);
}

void DocumentEdit::rollBack() noexcept
{
    if (guardMemory([this] { return before ? backend->replaceText(*before) : Outcome(); }).ok())
        before.reset();
}

} // namespace Repository
