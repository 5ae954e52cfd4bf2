#pragma once

#include "repository/backends/Backend.h"

namespace Repository {

// A change of a backend by more than one value. While it exists, Backend::set changes nothing, so that what
// it finds and what it leaves is the same in the backend and in the tree. It lives as long as the structure
// lock is held, and keeps the backend alive: the caller may release one that is closed meanwhile. One thread.
class DocumentEdit
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    explicit DocumentEdit(Backend& backend);
    ~DocumentEdit();
    Q_DISABLE_COPY(DocumentEdit)

    // A refused one changes nothing.
    Outcome set(const QString& path, const FrameworkCore::Values::Value& value);
    Outcome respell(const QString& path, const std::string& spelling);
    Outcome replaceText(std::string bytes);

    // Takes the backend back to what it was when setRollbackPoint was called first; nothing without that.
    void setRollbackPoint();
    void rollBack() noexcept;

private:
    const std::shared_ptr<Backend> backend;
    std::optional<std::string> before;
};

} // namespace Repository
