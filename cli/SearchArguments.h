#pragma once

#include "cli/Command.h"
#include "cli/Session.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace CommandLine {

// What the arguments and options of a search say. What is wrong with them is reported.
class SearchArguments
{
public:
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    // With its options --regex, --ignore-case and --type; nothing for a text or type that is none.
    static std::optional<SearchQuery> readQuery(const Session& session, const Invocation& invocation,
                                                const QString& text);

    // Each file once; nothing on failure, whose exit code the session has.
    static std::optional<std::vector<const Source*>> open(Session& session, const QStringList& files,
                                                          Session::Opening opening);

    static constexpr Option ignoreCase{
        "--ignore-case", {},
        Word::Text,      QT_TRANSLATE_NOOP("CommandLine", "take capital letters and small ones as the same"),
        false,           "-i"};
    static constexpr Option ofType{
        "--type", "T", Word::Type,
        QT_TRANSLATE_NOOP("CommandLine", "only attributes of the type T; when repeated, of any of them"),
        true};
};

} // namespace CommandLine
