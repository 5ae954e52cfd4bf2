#include "repository/search/AttributeSearch.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/Border.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/operations/AttributeWriter.h"
#include "repository/search/NodeMatcher.h"
#include "repository/search/ResumableWalk.h"
#include "repository/store/Refusals.h"

#include <algorithm>

namespace Repository {

using namespace FrameworkCore::AppConfig;

namespace {

// So many nodes are looked at between two calls of the sink, which takes less than a millisecond, unless an
// expression takes nearly all the steps that it may on each.
int portionFor(const Interfaces::SearchQuery& query)
{
    return query.syntax == Interfaces::SearchQuery::Syntax::RegularExpression ? 16 : 512;
}

Outcome tooManySteps(const QString& path)
{
    return Outcome(StatusCode::InvalidPattern, Texts::tr("it takes more steps or memory than are allowed"))
        .of(Outcome::Operation::Match, path)
        .advise(Texts::tr("simplify the expression"));
}

// One run of a search.
class Search
{
public:
    using SearchHit = Interfaces::SearchHit;
    using SearchQuery = Interfaces::SearchQuery;
    using Sink = Interfaces::SearchInterface::Sink;

    Search(AttributeTree& attributes, const SearchQuery& searched, const Sink& receiver)
        : tree(attributes), query(searched), matcher(attributes, searched), sink(receiver),
          candidates(std::size_t(portionFor(searched)))
    {
    }

    Outcome run(const QString& root)
    {
        ResumableWalk walk(tree, root);
        Outcome outcome;
        while (outcome.ok() && !walk.isDone()) {
            count = 0;
            walk.visit(int(candidates.size()), [&](const Node& node) {
                const bool isOwn = root.isEmpty() && Repository::isOwn(node);
                if (!isOwn)
                    candidates[std::size_t(count++)].takeFrom(node, tree);
                return !isOwn;
            });
            outcome = match();
        }
        return outcome;
    }

    // Of a list, which is no node of its own and so found by its whole path only.
    Outcome findElement()
    {
        const QString& path = query.pathPattern;
        const bool isWithin = query.roots.isEmpty() ||
                              std::any_of(query.roots.begin(), query.roots.end(),
                                          [&path](const QString& root) { return isAtOrBelow(path, root); });
        count = isWithin && !query.replacement && candidates.front().takeElement(path, tree) ? 1 : 0;
        return count > 0 ? match() : Outcome();
    }

private:
    Outcome match()
    {
        QVector<SearchHit> hits;
        for (int i = 0; i < count; ++i) {
            const NodeMatcher::Candidate& candidate = candidates[std::size_t(i)];
            std::optional<bool> isHit = matcher.matches(candidate);
            if (isHit == false || (query.replacement && !candidate.isReadable))
                continue;
            SearchHit hit = matcher.hitOf(candidate);
            if (isHit && query.replacement)
                isHit = matcher.replaceIn(hit);
            if (!isHit)
                return tooManySteps(candidate.path);
            if (*isHit)
                hits.append(std::move(hit));
        }
        return sink(hits, count) ? Outcome() : Outcome(StatusCode::Cancelled, QString());
    }

    AttributeTree& tree;
    const SearchQuery& query;
    const NodeMatcher matcher;
    const Sink& sink;
    std::vector<NodeMatcher::Candidate> candidates; // of the portion, kept for the next one
    int count = 0;
};

// Gives the node, and what it has to be once all files have taken theirs.
Outcome replaceInFile(Transaction& transaction, const Interfaces::SearchHit& hit, Node*& node,
                      QVariant& accepted)
{
    NodeWriter& nodes = transaction.getNodes();
    node = nodes.find(hit.path);
    if (!node || !node->isAttribute())
        return Refusals::notFound();
    if (node->backend)
        transaction.edit(*node->backend); // nobody writes to it from here on
    {
        const std::lock_guard lock(nodes.getTree().index.shardOf(*node).mutex);
        if (!node->value.isSame(hit.value))
            return Outcome(StatusCode::BackendFailure, Texts::tr("it has changed since it was found"))
                .advise(Texts::tr("search again"));
        if (node->finerValue())
            return Refusals::losesDigits();
    }
    return AttributeWriter::writeInFile(transaction, *node, hit.replacement, accepted);
}

} // namespace

std::optional<AttributeSearch::PatternFault> AttributeSearch::findFault(const SearchQuery& query) const
{
    return TextMatcher(query).getFault();
}

Outcome AttributeSearch::find(const SearchQuery& query, const Sink& sink) const
{
    return runForCaller(Outcome::Operation::None, query.text, [&] {
        if (const auto fault = findFault(query))
            return Outcome(StatusCode::InvalidPattern,
                           Texts::tr("'%1' is not a regular expression: %2")
                               .arg(Outcome::shortened(query.text), fault->reason));
        Search search(*store->getTree(), query, sink);
        Outcome outcome;
        const QStringList roots = rootsOf(query);
        for (auto root = roots.begin(); root != roots.end() && outcome.ok(); ++root)
            outcome = search.run(*root);
        return outcome.ok() ? search.findElement() : outcome;
    });
}

// Without those that lie below others.
QStringList AttributeSearch::rootsOf(const SearchQuery& query) const
{
    if (query.roots.isEmpty())
        return {QString()};
    QStringList roots;
    for (const QString& root : query.roots) {
        const bool isCovered = std::any_of(query.roots.begin(), query.roots.end(), [&](const QString& other) {
            return root != other && isAtOrBelow(root, other);
        });
        if (!isCovered && !roots.contains(root))
            roots.append(root);
    }
    return roots;
}

Outcome AttributeSearch::replace(const QVector<SearchHit>& hits, const QString& stepName)
{
    return runForCaller(Outcome::Operation::Change, stepName, [&] {
        QStringList paths;
        for (const SearchHit& hit : hits)
            paths.append(hit.path);
        const History::Scope step(store->getHistory(), stepName);
        Transaction transaction(*store->getTree(), step.getRecorder(), paths);
        std::vector<std::pair<Node*, QVariant>> changed;
        for (const SearchHit& hit : hits) {
            Node* node = nullptr;
            QVariant accepted;
            Outcome outcome = replaceInFile(transaction, hit, node, accepted);
            if (!outcome.ok())
                return Refusals::notSet(std::move(outcome), hit.path, hit.replacement, false);
            changed.emplace_back(node, std::move(accepted));
        }
        for (auto& [node, value] : changed)
            transaction.getNodes().setAttribute(*node, std::move(value), node->getAccess());
        transaction.commit();
        transaction.showLinked();
        return Outcome();
    });
}

} // namespace Repository
