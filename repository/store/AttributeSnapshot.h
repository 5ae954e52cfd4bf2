#pragma once

#include "host/FrameworkCore/AppConfig/AttributeInterface.h"
#include "repository/store/Node.h"

namespace Repository {

// What was known of an attribute at one moment. Immutable; any thread.
class AttributeSnapshot : public FrameworkCore::AppConfig::Interfaces::AttributeInterface
{
public:
    // The node's attribute lock is held.
    explicit AttributeSnapshot(const Node& node)
        : path(node.path), value(node.isReadable() ? node.value : QVariant()),
          dataType(QString::fromLatin1(node.value.typeName())), access(node.getAccess())
    {
    }

    FrameworkCore::AppConfig::AccessMode getAccessMode() const override { return access; }
    QString getName() const override { return path.mid(path.lastIndexOf(QLatin1Char('.')) + 1); }
    QString getPath() const override { return path; }
    QString getDataType() const override { return dataType; }
    QVariant getValue() const override { return value; }

private:
    QString path;
    QVariant value;
    QString dataType;
    FrameworkCore::AppConfig::AccessMode access;
};

} // namespace Repository
