#include "repository/store/WriteCheck.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/store/Refusals.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Outcome acceptWrite(const Node& node, const QVariant& value, QVariant& accepted)
{
    if (!FrameworkCore::AppConfig::isWritable(node.getAccess()))
        return Refusals::readOnly(node);
    auto converted = node.value.isValid()
                         ? FrameworkCore::Values::convertVariant(value, node.value.userType())
                         : FrameworkCore::Values::toAttributeVariant(value);
    if (!converted)
        return node.value.isValid() ? Refusals::wrongType(value, node.value.userType())
                                    : Refusals::noAttributeType();
    const Rules* rules = node.getRules();
    if (const Breach breach = rules ? findBreach(*rules, *converted) : Breach())
        return {StatusCode::RefusedByValidation, breach.explain()};
    accepted = *std::move(converted);
    return {};
}

} // namespace Repository
