#pragma once

#include "host/FrameworkCore/AppConfig/SearchInterface.h"

#include <memory>

namespace Repository {

class AttributeStore;

// Searches the attributes of a store. Any thread.
class AttributeSearch : public FrameworkCore::AppConfig::Interfaces::SearchInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using PatternFault = FrameworkCore::AppConfig::Interfaces::PatternFault;
    using SearchHit = FrameworkCore::AppConfig::Interfaces::SearchHit;
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    explicit AttributeSearch(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    std::optional<PatternFault> findFault(const SearchQuery& query) const override;
    Outcome find(const SearchQuery& query, const Sink& sink) const override;
    Outcome replace(const QVector<SearchHit>& hits, const QString& stepName) override;

private:
    QStringList rootsOf(const SearchQuery& query) const;

    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
