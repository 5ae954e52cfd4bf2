#pragma once

#include <QCoreApplication>
#include <QString>

#include <string_view>

namespace CommandLine {

// What the program says to people, in the language that is shown. A text of the table is marked by
// QT_TRANSLATE_NOOP where it stands; results for programs are never translated.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    // One of the table, UTF-8 with a 0 at its end.
    static QString of(std::string_view text) { return tr(text.data()); }
};

} // namespace CommandLine
