#pragma once

#include <QString>
#include <QStringList>

namespace CommandLine {

// What somebody may have meant by a word that is not known.
class Suggestion
{
public:
    // "; did you mean 'get'?", or nothing when no known word is near. The prefix precedes the known
    // word.
    static QString forTypo(const QString& word, const QStringList& known, const QString& prefix = {});
};

} // namespace CommandLine
