#pragma once

#include <QCoreApplication>

namespace Vantry {

// Why plug-ins are left out, in the language that is shown.
class PluginTexts
{
    Q_DECLARE_TR_FUNCTIONS(Vantry::PluginTexts)
};

} // namespace Vantry
