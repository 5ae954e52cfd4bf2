#include "repository/transfer/ElementCopy.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/ListElement.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"
#include "repository/transaction/ListEdit.h"
#include "repository/transaction/Projection.h"
#include "repository/transaction/SubtreeRemoval.h"
#include "repository/transfer/SubtreeReader.h"

namespace Repository {

using FrameworkCore::AppConfig::isWritable;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Type;

ElementCopy::ElementCopy(Transaction& current, QString fromPath, QString toPath)
    : transaction(current), nodes(current.getNodes()), from(std::move(fromPath)), to(std::move(toPath)),
      source(placeOf(from)), target(placeOf(to))
{
}

ElementCopy::Place ElementCopy::placeOf(const QString& path) const
{
    Place place;
    place.array = parentPath(path).toString();
    place.node = nodes.find(path);
    place.parent = nodes.find(place.array);
    place.index = elementIndex(pathAfter(path, place.array.size())).value_or(-1);
    place.isInList = !place.node && place.index >= 0 && ListEdit::textsIn(nodes, place.parent).has_value();
    return place;
}

bool ElementCopy::isArray(const Node* node) const
{
    return node && node->backend && node->backend->isArray(node->getPath()) == true;
}

bool ElementCopy::isNeeded(bool isMove) const
{
    const bool isWithinArray = isMove && source.array == target.array && source.index >= 0;
    return source.isInList || target.isInList ||
           (target.index >= 0 && (target.node || isWithinArray) && isArray(target.parent));
}

Outcome ElementCopy::run(bool isMove, TransferReport& report)
{
    if (from == to && isMove)
        return {};
    Outcome outcome = readSource(isMove);
    if (!outcome.ok())
        return outcome;
    const auto reordered = isMove && source.array == target.array ? reorder() : std::nullopt;
    outcome = reordered ? *reordered : insert(isMove, report);
    if (outcome.ok() && isMove && !reordered)
        outcome = remove();
    if (outcome.ok())
        show(isMove);
    return outcome;
}

Outcome ElementCopy::readSource(bool isMove)
{
    if (!source.node && !source.isInList)
        return Refusals::notFound().of(Outcome::Operation::Change, from);
    if (!isValidPath(to))
        return Refusals::invalidPath(to);
    if (isAtOrBelow(to, ownRoot))
        return Refusals::ownTree();
    if (isAtOrBelow(to, from))
        return {StatusCode::InvalidPath, Texts::tr("a subtree cannot be put into itself")};
    for (const Node* const parent : {source.parent, target.parent}) {
        const bool isChanged = parent == target.parent || isMove;
        if (isChanged && parent && parent->backend && !isWritable(parent->backend->getAccessMode()))
            return Refusals::readOnly(*parent->backend);
    }
    if (source.isInList) {
        const QStringList texts = *ListEdit::textsIn(nodes, source.parent);
        if (source.index >= texts.size())
            return Refusals::notFound().of(Outcome::Operation::Change, from);
        entries.push_back({{}, FrameworkCore::Values::toValue(texts[source.index])});
        return {};
    }
    const SubtreeReader reader(nodes.getTree(), *source.node);
    for (const SubtreePart& part : reader.getParts())
        entries.push_back({pathBytes(part.path()), part.exact()});
    Outcome outcome = reader.check(isMove);
    return outcome.ok() && isMove ? SubtreeRemoval(transaction, *source.node).check() : outcome;
}

// Within one array, where the element is to have the new index in the end.
std::optional<Outcome> ElementCopy::reorder()
{
    Node& array = *target.parent;
    if (array.backend) {
        const auto moved = transaction.edit(*array.backend).moveElement(from, to);
        edited.insert(array.backend);
        if (moved)
            return moved;
    }
    if (!source.isInList)
        return {};
    QStringList texts = *ListEdit::textsIn(nodes, &array);
    if (target.index >= texts.size())
        return ListEdit::beyond(texts.size() - 1);
    texts.move(source.index, target.index);
    return changeList(array, array.getPath(), texts);
}

const Backend* ElementCopy::writerOfSource() const
{
    return source.isInList ? source.parent->backend
                           : SubtreeReader(nodes.getTree(), *source.node).getWriter();
}

// As it is written in a file of the same type.
bool ElementCopy::writeExcerpt(Backend& backend, bool& losesComments)
{
    const Backend* const writer = writerOfSource();
    losesComments = writer && writer->hasComments(from);
    if (!writer || writer->getDescription().type != backend.getDescription().type)
        return false;
    const auto excerpt = writer->excerpt(from);
    edited.insert(&backend);
    return excerpt && transaction.edit(backend).insertExcerpt(to, *excerpt, entries);
}

Outcome ElementCopy::insert(bool isMove, TransferReport& report)
{
    bool losesComments = false;
    Backend* const backend = target.parent ? target.parent->backend : nodes.nearest(to).backend;
    isWritten = backend && writeExcerpt(*backend, losesComments);
    if (isWritten)
        return {};
    if (isMove && losesComments)
        return Refusals::losesComments();
    if (const Backend* const writer = writerOfSource(); writer && writer->countTags(from) > 0) {
        if (isMove)
            return Refusals::losesTags();
        report.setTagsLeftOut();
    }
    if (losesComments)
        report.setCommentsLeftOut(1);
    if (target.isInList || target.node) {
        const auto inserted = backend ? transaction.edit(*backend).insertElement(to, entries) : std::nullopt;
        if (inserted)
            edited.insert(backend);
        if (inserted)
            return *inserted;
    }
    if (!target.isInList && target.node)
        return Outcome(StatusCode::AlreadyExists, Texts::tr("it exists already"))
            .advise(Texts::tr("choose another name"));
    if (!target.isInList && !backend)
        return {};
    if (!target.isInList) {
        edited.insert(backend);
        std::size_t refused = 0;
        return transaction.edit(*backend).insertAll(to, entries, refused);
    }
    QStringList texts = *ListEdit::textsIn(nodes, target.parent);
    const Documents::Value& value = entries.front().value;
    if (entries.size() > 1 || value.type == Type::Group || value.type == Type::StringList)
        return {StatusCode::WrongType, Texts::tr("the elements of a list are texts")};
    if (target.index > texts.size())
        return ListEdit::beyond(texts.size());
    texts.insert(target.index, QString::fromStdString(FrameworkCore::Values::toText(value)));
    return changeList(*target.parent, target.array, texts);
}

// Where the source is once an element has come before it, or before what it lies in.
QString ElementCopy::sourceAfterInsertion() const
{
    const QStringView below =
        isAtOrBelow(from, target.array) ? pathAfter(from, target.array.size()) : QStringView();
    const QStringView name = below.left(below.indexOf(pathSeparator));
    const auto index = elementIndex(name);
    if (!index || *index < target.index || (!target.isInList && !target.node))
        return from;
    return joinedPath(target.array, QString::number(*index + 1)) + below.mid(name.size()).toString();
}

Outcome ElementCopy::remove()
{
    if (source.isInList) {
        QStringList texts = *ListEdit::textsIn(nodes, source.parent);
        texts.removeAt(source.index);
        return changeList(*source.parent, parentPath(sourceAfterInsertion()).toString(), texts,
                          sourceAfterInsertion());
    }
    if (!source.node->backend)
        return {};
    edited.insert(source.node->backend);
    DocumentEdit& document = transaction.edit(*source.node->backend);
    return isWritten ? document.removeExcerpt(sourceAfterInsertion())
                     : document.remove(sourceAfterInsertion());
}

// The path is that in the document by now.
Outcome ElementCopy::changeList(Node& list, const QString& path, QStringList texts, const QString& removed)
{
    QVariant accepted;
    {
        const std::lock_guard shardLock(nodes.getTree().index.shardOf(list).mutex);
        const Outcome outcome = acceptWrite(list, texts, accepted);
        if (!outcome.ok())
            return outcome;
    }
    if (!list.backend) {
        lists.emplace_back(&list, std::move(texts));
        return {};
    }
    edited.insert(list.backend);
    if (isWritten && !removed.isEmpty() && transaction.edit(*list.backend).removeExcerpt(removed).ok())
        return {};
    return ListEdit::writeTo(transaction.edit(*list.backend), path, accepted, removed);
}

void ElementCopy::show(bool isMove)
{
    transaction.commit();
    for (const auto& [list, texts] : lists)
        nodes.setAttribute(*list, texts, list->getAccess());
    if (isMove && source.node && !source.node->backend) {
        Node& parent = *source.node->parent;
        nodes.remove(*source.node);
        nodes.prune(parent);
    }
    const bool isNew = !target.node && !target.isInList;
    Node& ancestor = nodes.nearest(parentPath(to));
    if (isNew && !ancestor.backend)
        nodes.create(to, NodeIndex::Key(to), ancestor,
                     FrameworkCore::Values::toVariant(entries.front().value),
                     FrameworkCore::AppConfig::AccessMode::ReadWrite);
    for (Backend* const backend : edited)
        Projection(transaction).showAll(*backend);
}

} // namespace Repository
