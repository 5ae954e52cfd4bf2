#include "desk/common/ReadableText.h"

#include "host/Utilities/ModelViews/ReadablePath.h"

namespace Vantry {

using FrameworkCore::AppConfig::Outcome;

QString readableText(const Outcome& outcome,
                     FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository)
{
    return outcome.toText([&repository](const QString& path) {
        return Outcome::shownPath(Utilities::ModelViews::readablePath(path, repository));
    });
}

} // namespace Vantry
