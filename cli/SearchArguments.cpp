#include "cli/SearchArguments.h"

#include "cli/Output.h"
#include "cli/Texts.h"
#include "cli/TypedText.h"

#include <algorithm>

namespace CommandLine {

std::optional<SearchArguments::SearchQuery>
SearchArguments::readQuery(const Session& session, const Invocation& invocation, const QString& text)
{
    SearchQuery query;
    query.text = text;
    query.fields = SearchQuery::Value;
    query.caseSensitivity = invocation.has("--ignore-case") ? Qt::CaseInsensitive : Qt::CaseSensitive;
    if (invocation.has("--regex"))
        query.syntax = SearchQuery::Syntax::RegularExpression;
    query.types = invocation.valuesOf("--type");
    for (const QString& type : qAsConst(query.types)) {
        if (!TypedText::typeNamed(type))
            return {};
    }
    const auto fault = session.getRepository().getSearchInterface()->findFault(query);
    if (!fault)
        return query;
    Output::message(Texts::tr("'%1' is not a regular expression: %2").arg(text, fault->reason));
    return {};
}

std::optional<std::vector<const Source*>> SearchArguments::open(Session& session, const QStringList& files,
                                                                Session::Opening opening)
{
    std::vector<const Source*> sources;
    for (const QString& file : files) {
        const Source* const source = session.open(file, opening);
        if (!source)
            return {};
        if (std::find(sources.begin(), sources.end(), source) == sources.end())
            sources.push_back(source);
    }
    return sources;
}

} // namespace CommandLine
