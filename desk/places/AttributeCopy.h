#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>

namespace Vantry {

// What a person takes along of an attribute, as texts. GUI thread.
class AttributeCopy
{
public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    AttributeCopy(Repository& repository, const QString& path);

    // Nothing for a node without a value and for one that may not be read.
    QString getValue() const { return value; }
    bool hasValue() const { return isReadable; }

    // The command that gives the attribute its value, or lists what is below a node without one; empty for
    // what is in no file.
    QString getCommand() const;

    QString getFile() const { return file; } // empty for what is in none

private:
    const QString path;
    QString value;
    bool isReadable = false;
    QString backend;
    QString type; // of the backend
    QString file;
};

} // namespace Vantry
