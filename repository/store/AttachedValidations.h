#pragma once

#include "host/FrameworkCore/AppConfig/ValidationInterface.h"

#include <memory>

namespace Repository {

struct AttributeTree;

// Attaches validations to paths of the tree. Any thread.
class AttachedValidations : public FrameworkCore::AppConfig::Interfaces::ValidationInterface
{
public:
    explicit AttachedValidations(std::shared_ptr<AttributeTree> attributes) : tree(std::move(attributes)) {}

    QStringList getValidationNames() override;
    int addValidation(const QString& path, const QString& name) override;
    QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription> getValidationDescriptions() override;
    QStringList getValidationsOf(const QString& path) const override;

private:
    std::shared_ptr<AttributeTree> tree;
};

} // namespace Repository
