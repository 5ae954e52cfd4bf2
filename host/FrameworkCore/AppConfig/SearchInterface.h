#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QFlags>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <optional>

namespace FrameworkCore::AppConfig::Interfaces {

// What nodes are searched for, and where. A node is found when it meets all that is asked.
struct SearchQuery
{
    enum class Syntax {
        Plain,
        Wildcard,         // "*" stands for any run of characters
        RegularExpression // of Perl's kind
    };

    // Where the text is looked for: at least one of them must have it.
    enum Field { Name = 1, Path = 2, Value = 4, Type = 8 };
    Q_DECLARE_FLAGS(Fields, Field)

    QString text; // an empty one is a part of everything, also of nodes without a value
    Syntax syntax = Syntax::Plain;
    Fields fields = Fields(Name | Path | Value | Type);
    Qt::CaseSensitivity caseSensitivity = Qt::CaseInsensitive;
    bool isWhole = false; // the text is all of the field, not a part of it

    QStringList roots;   // the node is at or below one of them; empty for all but the repository's own tree
    QString pathPattern; // the node's path matches, as in PathSearch; empty for any
    QStringList types;   // the attribute is of one of these types, by their names in files; empty for any

    // What is put into values in place of the text. Then only attributes are found whose value it changes. In
    // that of a regular expression "\1" to "\9" are what its groups have matched, "\0" all of it, and "\\" is
    // a backslash.
    std::optional<QString> replacement = {};
};

Q_DECLARE_OPERATORS_FOR_FLAGS(SearchQuery::Fields)

// A node that was found, as it was then.
struct SearchHit
{
    QString path;
    QString type;         // its name in files; "group" for a mere group, empty for what must not be read
    QVariant value;       // invalid for a group, null, and what must not be read
    QVariant replacement; // what the value becomes, if the query replaces
    Outcome refusal;      // why it cannot become that; a success where it can
};

// What is wrong with the text of a query.
struct PatternFault
{
    QString reason;
    int offset = 0; // of the character where it shows, from 0
};

// Finds attributes by their texts, and replaces these. Lists have the texts of their elements, and all of
// them joined. Any thread; what is created or removed meanwhile is found or not.
class VANTRY_CORE_EXPORT SearchInterface
{
public:
    // Gets what was found since it was called last, which may be nothing, and how many nodes were looked at.
    // It is called on the searching thread, under no lock, some hundreds of times a second at least; false
    // ends the search.
    using Sink = std::function<bool(const QVector<SearchHit>& hits, int searchedCount)>;

    virtual ~SearchInterface() = default;

    // Nothing for a query that can be searched for.
    virtual std::optional<PatternFault> findFault(const SearchQuery& query) const = 0;

    // In the order of a tree: parents first, siblings in the order of their file. Cancelled when the sink
    // ended it; InvalidPattern for a text that is none, or that takes more steps on one of the attributes
    // than are allowed.
    virtual Outcome find(const SearchQuery& query, const Sink& sink) const = 0;

    // Gives attributes that a replacing query has found their new values, all or none, as one step of undo of
    // that name. Refused when one of them has got another value meanwhile. Watchers are notified.
    virtual Outcome replace(const QVector<SearchHit>& hits, const QString& stepName) = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
