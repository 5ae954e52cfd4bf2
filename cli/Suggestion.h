#pragma once

#include <QString>
#include <QStringList>

namespace CommandLine {

// What somebody may have meant by a word that is not known: "; did you mean 'get'?", or nothing when no known
// word is near. The prefix precedes the known word.
QString suggestionFor(const QString& word, const QStringList& known, const QString& prefix = {});

} // namespace CommandLine
