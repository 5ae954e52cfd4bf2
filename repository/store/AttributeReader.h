#pragma once

#include "host/FrameworkCore/AppConfig/AttributeReaderInterface.h"

#include <memory>

namespace Repository {

struct AttributeTree;

// Reads attributes of a tree. Any thread.
class AttributeReader : public FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface
{
public:
    explicit AttributeReader(std::shared_ptr<AttributeTree> attributes) : tree(std::move(attributes)) {}

    int readAttributeValue(const QString& path, QVariant& value, const int& option) override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeInterface>
    getAttribute(const QString& path) override;

private:
    int readElement(const QString& path, QVariant& value) const;

    std::shared_ptr<AttributeTree> tree;
};

} // namespace Repository
