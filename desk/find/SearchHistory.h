#pragma once

#include "host/FrameworkCore/AppConfig/SearchInterface.h"

#include <QVector>

namespace Vantry {

// What was searched for last, with all switches but where, from one start to the next. GUI thread.
class SearchHistory
{
public:
    using SearchQuery = FrameworkCore::AppConfig::Interfaces::SearchQuery;

    static constexpr int mostKept = 50;

    static QVector<SearchQuery> get(); // the newest first, each text once
    static void add(const SearchQuery& query);
};

} // namespace Vantry
