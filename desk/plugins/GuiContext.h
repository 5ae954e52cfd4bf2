#pragma once

#include "host/Shared/GuiContexts/ReaderInterface.h"

namespace Vantry {

// The context of one window. Immutable; any thread.
class GuiContext : public Shared::GuiContexts::ReaderInterface
{
public:
    explicit GuiContext(QStringList contextPath) : path(std::move(contextPath)) {}

    QStringList getContextPath() const override { return path; }

private:
    QStringList path;
};

} // namespace Vantry
