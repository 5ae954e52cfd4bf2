#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/store/Node.h"

#include <QString>
#include <QStringList>
#include <QVariant>

namespace Repository {

// The refusals that several operations share, in words for the person who meant the change: why it was
// refused and what would not be. Any thread.
class Refusals
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    static Outcome wrongType(const QVariant& value, int wantedType);
    static Outcome noAttributeType();
    static Outcome readOnly(const Node& node);
    static Outcome readOnly(const Backend& backend);
    static Outcome notFound();
    static Outcome invalidPath(QStringView path);
    static Outcome ownTree();
    static Outcome losesComments(); // of what would be moved by its values
    static Outcome losesTags();     // the same
    static Outcome losesDigits();   // of a second, which an attribute does not hold
    static Outcome noBackend();     // of that name
    static Outcome noType(const QString& type, QStringList valid = {}); // without any, those of files

    // What a document has said of a value, which it may have quoted: replaced when the value is hidden,
    // shortened when it is long.
    static Outcome unfit(Outcome outcome, const QVariant& value, bool isHidden);

    // The same of an attribute that is there. Where the value would have a type tag as a new one, that is
    // advised.
    static Outcome unfitFor(const Node& node, Outcome outcome, const QVariant& value);

    // That an attribute was not set to the value, which is left out where it is hidden.
    static Outcome notSet(Outcome outcome, const QString& path, const QVariant& value, bool isHidden);
};

} // namespace Repository
