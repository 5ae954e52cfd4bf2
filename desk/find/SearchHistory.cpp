#include "desk/find/SearchHistory.h"

#include <QSettings>

#include <algorithm>

namespace Vantry {

namespace {

const QLatin1String searchesKey("find/searches");
const QString textKey(QStringLiteral("text"));
const QString syntaxKey(QStringLiteral("syntax"));
const QString fieldsKey(QStringLiteral("fields"));
const QString caseKey(QStringLiteral("matchCase"));
const QString wholeKey(QStringLiteral("whole"));

} // namespace

QVector<SearchHistory::SearchQuery> SearchHistory::get()
{
    QVector<SearchQuery> searches;
    const QVariantList kept = QSettings().value(searchesKey).toList();
    for (const QVariant& entry : kept) {
        const QVariantMap map = entry.toMap();
        SearchQuery query;
        query.text = map.value(textKey).toString();
        query.syntax = SearchQuery::Syntax(std::clamp(map.value(syntaxKey).toInt(), 0, 2));
        query.fields = SearchQuery::Fields(map.value(fieldsKey).toInt()) & query.fields;
        query.caseSensitivity = map.value(caseKey).toBool() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        query.isWhole = map.value(wholeKey).toBool();
        searches.append(query);
    }
    return searches;
}

void SearchHistory::add(const SearchQuery& query)
{
    QVariantList kept = QSettings().value(searchesKey).toList();
    const auto hasText = [&query](const QVariant& entry) {
        return entry.toMap().value(textKey).toString() == query.text;
    };
    kept.erase(std::remove_if(kept.begin(), kept.end(), hasText), kept.end());
    kept.prepend(QVariantMap{{textKey, query.text},
                             {syntaxKey, int(query.syntax)},
                             {fieldsKey, int(query.fields)},
                             {caseKey, query.caseSensitivity == Qt::CaseSensitive},
                             {wholeKey, query.isWhole}});
    QSettings().setValue(searchesKey, kept.mid(0, mostKept));
}

} // namespace Vantry
