#pragma once

#include "host/Shared/GuiContexts/ReaderInterface.h"

#include <memory>

namespace TestSupport {

// A GUI context with a given path.
class FixedContext : public Shared::GuiContexts::ReaderInterface
{
public:
    explicit FixedContext(QStringList components) : path(std::move(components)) {}

    QStringList getContextPath() const override { return path; }

    static std::shared_ptr<const ReaderInterface> create(const QStringList& components)
    {
        return std::make_shared<FixedContext>(components);
    }

private:
    QStringList path;
};

} // namespace TestSupport
