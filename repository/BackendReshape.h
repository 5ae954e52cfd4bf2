#pragma once

#include "repository/Backend.h"

#include <memory>
#include <optional>
#include <string>

namespace Repository {

// A change of a backend's document by more than one value. While it exists, Backend::set changes nothing, so
// that what it finds and what it leaves is the same in the document and in the tree. It lives as long as the
// structure lock of the store is held, and the backend as long as it does: who asked for the change may let
// go of one that has been closed meanwhile. One thread.
class Backend::Reshape
{
public:
    explicit Reshape(Backend& backend);
    ~Reshape();
    Q_DISABLE_COPY(Reshape)

    // A refused one changes nothing.
    Outcome set(const QString& path, const FrameworkCore::Values::Value& value);
    Outcome respell(const QString& path, const std::string& spelling);
    Outcome replaceText(std::string bytes);

    // Takes the document back to what it was when keepText was called first; nothing without that.
    void keepText();
    void restoreText() noexcept;

private:
    const std::shared_ptr<Backend> backend;
    std::optional<std::string> keptText;
};

} // namespace Repository
