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
    ~DocumentEdit();
    Q_DISABLE_COPY(DocumentEdit)

    Backend& getBackend() const { return *backend; }

    // Each changes entries in memory, or nothing. Paths are those of the tree.
    Outcome set(const QString& path, const Value& value);
    Outcome insert(const QString& path, const Value& value);
    Outcome remove(const QString& path);

    // Gives a value a spelling that the backend had for it before.
    Outcome respell(const QString& path, const std::string& spelling);

    // Replaces all that there is.
    Outcome replaceText(std::string bytes);

    // An entry that is not there and all below it; see Document::insertAll.
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                      std::size_t& refused);

    // Around many insertions; see Document. A refusal at the end leaves what was inserted.
    void beginBatch();
    Outcome endBatch(QString& refusedPath);

    void rollBack() noexcept;

private:
    // Before the first change.
    Backend& toChange();

    const std::shared_ptr<Backend> backend;
    const bool hasRollback;
    std::optional<std::string> before;
};

} // namespace Repository
