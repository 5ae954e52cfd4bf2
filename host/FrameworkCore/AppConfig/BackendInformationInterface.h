#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QVariant>

namespace FrameworkCore::AppConfig::Interfaces {

// A snapshot of what is known of one backend. Any thread.
class VANTRY_CORE_EXPORT BackendInformationInterface
{
public:
    virtual ~BackendInformationInterface() = default;

    virtual QString getBackendType() const = 0;
    virtual QString getBackendDescription() const = 0;

    // The file of the backend, as an absolute path; empty where a repository does not give it.
    virtual QString getBackendLocation() const { return {}; }

    // How the file tags the type of a new attribute with this value, in words for a person; empty where the
    // value alone shows its type, and where a repository does not give it.
    virtual QString explainTypeTag(const QVariant& /*value*/) const { return {}; }

    // Whether the file says of which type an attribute is: by its format, by quotes or by a type tag. Where
    // it does not, the type is guessed from the text, and AttributeWriterInterface::retype may change it
    // freely.
    virtual bool namesType(const QString& /*path*/) const { return true; }

    // How many of how many files a folder that is being opened has looked at; both are 0 otherwise.
    struct Progress
    {
        int done = 0;
        int total = 0;
    };
    virtual Progress getProgress() const { return {}; }
};

} // namespace FrameworkCore::AppConfig::Interfaces
