#pragma once

#include "repository/backends/Backend.h"

namespace Repository {

// A change of a backend's entries. While it exists, Backend::set changes nothing, so that what it finds and
// what it leaves is the same in the backend and in the tree. It lives as long as the structure lock is held,
// and keeps the backend alive: the caller may release one that is closed meanwhile. One thread.
class DocumentEdit
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using Value = FrameworkCore::Values::Value;

    // Only with rollback can the backend be taken back to what it was.
    DocumentEdit(Backend& backend, bool hasRollback);
    ~DocumentEdit() { backend->endEdit(); }
    Q_DISABLE_COPY(DocumentEdit)

    Backend& getBackend() const { return *backend; }

    // Whether a change may have changed other entries, which show the same.
    bool mayChangeOthers() const { return wasLinked || backend->isLinked(backend->getName()); }

    // Each changes entries in memory, or nothing. Paths are those of the tree.
    Outcome set(const QString& path, const Value& value) { return toChange().write(path, value); }
    Outcome insert(const QString& path, const Value& value) { return toChange().insert(path, value); }
    Outcome remove(const QString& path) { return toChange().remove(path); }

    // The same for entries as their author has written them; see Document. An excerpt is inserted when it
    // gives the expected entries, whose paths are relative.
    std::optional<Outcome> rename(const QString& path, const QString& name)
    {
        return toChange().rename(path, name);
    }
    bool insertExcerpt(const QString& path, const Documents::Excerpt& excerpt,
                       const std::vector<Documents::Entry>& expected)
    {
        return toChange().insertExcerpt(path, excerpt, expected);
    }
    Outcome removeExcerpt(const QString& path) { return toChange().removeExcerpt(path); }

    // For the elements of arrays; see Document.
    std::optional<Outcome> insertElement(const QString& path, const std::vector<Documents::Entry>& entries)
    {
        return toChange().insertElement(path, entries);
    }
    std::optional<Outcome> moveElement(const QString& path, const QString& newPath)
    {
        return toChange().moveElement(path, newPath);
    }

    // Gives a value a spelling that the backend had for it before.
    Outcome respell(const QString& path, const std::string& spelling)
    {
        return toChange().respell(path, spelling);
    }

    // Replaces all that there is.
    Outcome replaceText(std::string bytes) { return toChange().replaceText(std::move(bytes)); }

    // An entry that is not there and all below it; see Document::insertAll.
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries, std::size_t& refused)
    {
        return toChange().insertAll(path, entries, refused);
    }

    // The same in the place of one that is there.
    Outcome replaceAll(const QString& path, const std::vector<Documents::Entry>& entries,
                       std::size_t& refused)
    {
        return toChange().replaceAll(path, entries, refused);
    }

    // Around many insertions; see Document. A refusal at the end leaves what was inserted.
    void beginBatch() { toChange().beginBatch(); }
    Outcome endBatch(QString& refusedPath) { return backend->endBatch(refusedPath); }

    void rollBack() noexcept;

private:
    // Before the first change.
    Backend& toChange();

    const std::shared_ptr<Backend> backend;
    const bool hasRollback;
    const bool wasLinked;
    std::optional<std::string> before;
};

} // namespace Repository
