#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace Utilities::ModelViews::Widgets {

// The node of the process's repository below which an attribute is to be created, and what that would mean,
// in words for the person who does. GUI thread.
class NewAttributePlace
{
public:
    // The empty path is a place of which nothing is known.
    explicit NewAttributePlace(const QString& parentPath);

    const QString& getParentPath() const { return parentPath; }

    // Why the text cannot be the name of a new attribute anywhere; empty when it can. A name may be a path of
    // several names below one another.
    static QString nameFault(const QString& name);

    // Why no attribute of that name can be created here now; empty when one can.
    QString faultOf(const QString& name) const;

    // What else would change; none for most attributes.
    QStringList remarksOn(const QString& name, const QVariant& value) const;

private:
    using NodeInformation = FrameworkCore::AppConfig::Interfaces::NodeInformation;

    QString pathOf(const QString& name) const;
    NodeInformation informationOn(const QString& path) const;
    QString nearestNode(const QString& path) const; // that exists; the path itself or above it

    const QString parentPath;
    const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TreeInterface> tree; // empty: unknown
};

} // namespace Utilities::ModelViews::Widgets
