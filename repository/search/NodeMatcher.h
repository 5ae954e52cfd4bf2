#pragma once

#include "host/FrameworkCore/AppConfig/SearchInterface.h"
#include "repository/search/TextMatcher.h"
#include "repository/store/AttributeTree.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace Repository {

// Tells of one node after the other whether it meets a query, and what becomes of it if that replaces. One
// thread.
class NodeMatcher
{
public:
    using SearchHit = FrameworkCore::AppConfig::Interfaces::SearchHit;
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    // What is known of a node, so that it is looked at under no lock.
    struct Candidate
    {
        // The structure lock is held.
        void takeFrom(const Node& node, AttributeTree& tree);

        // False where there is no such element of a list.
        bool takeElement(const QString& path, AttributeTree& tree);

        QString path;
        QVariant value;
        bool isAttribute = false;
        bool isReadable = false;
    };

    NodeMatcher(AttributeTree& attributes, const SearchQuery& searched);

    // Nothing when it takes more steps than are allowed.
    std::optional<bool> matches(const Candidate& candidate) const;

    SearchHit hitOf(const Candidate& candidate) const;

    // Gives a hit its replacement; false when the value stays as it is.
    std::optional<bool> replaceIn(SearchHit& hit) const;

private:
    std::optional<bool> hasText(const Candidate& candidate) const;
    std::optional<bool> hasTextInValue(const QVariant& value) const;
    bool namesMerge(const QString& path) const;
    std::optional<QVariant> replaced(const QVariant& value, const QString& path,
                                     FrameworkCore::AppConfig::Outcome& refusal) const;

    AttributeTree& tree;
    const SearchQuery& query; // not owned
    const TextMatcher text;
    const FrameworkCore::AppConfig::PathPattern paths;
};

} // namespace Repository
