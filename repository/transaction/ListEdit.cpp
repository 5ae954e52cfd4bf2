#include "repository/transaction/ListEdit.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/ListElement.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Outcome ListEdit::beyond(int count)
{
    return Outcome(StatusCode::BackendFailure, Texts::tr("the list has %1 elements").arg(count))
        .advise(Texts::tr("the next one is %1").arg(count));
}

std::optional<QStringList> ListEdit::textsIn(const NodeWriter& nodes, const Node* node)
{
    if (!node)
        return {};
    const std::lock_guard shardLock(nodes.getTree().index.shardOf(*node).mutex);
    return ListElement::isList(node) ? std::optional(node->value.toVariant().toStringList()) : std::nullopt;
}

// What a backend holds stays until it is written.
QStringList ListEdit::read()
{
    if (list.backend)
        transaction.edit(*list.backend);
    return textsIn(transaction.getNodes(), &list).value_or(QStringList());
}

Outcome ListEdit::insert(int index, const QVariant& value)
{
    QStringList texts = read();
    const auto text = FrameworkCore::Values::convertVariant(value, QMetaType::QString);
    if (!text)
        return Refusals::wrongType(value, QMetaType::QString);
    if (index > texts.size())
        return beyond(texts.size());
    texts.insert(index, text->toString());
    return write(texts);
}

Outcome ListEdit::set(int index, const QVariant& value)
{
    QStringList texts = read();
    const auto text = FrameworkCore::Values::convertVariant(value, QMetaType::QString);
    if (!text)
        return Refusals::wrongType(value, QMetaType::QString);
    if (index >= texts.size())
        return Refusals::notFound();
    texts[index] = text->toString();
    return write(texts);
}

Outcome ListEdit::remove(int index)
{
    QStringList texts = read();
    if (index >= texts.size())
        return Refusals::notFound();
    texts.removeAt(index);
    return write(texts, joinedPath(list.getPath(), QString::number(index)));
}

Outcome ListEdit::writeTo(DocumentEdit& document, const QString& path, const QVariant& texts,
                          const QString& removed)
{
    if (!removed.isEmpty() && !texts.toStringList().isEmpty() && document.remove(removed).ok())
        return {};
    return document.set(path, FrameworkCore::Values::toValue(texts));
}

Outcome ListEdit::write(const QStringList& texts, const QString& removed)
{
    QVariant accepted;
    {
        AttributeTree& tree = transaction.getNodes().getTree();
        const std::lock_guard shardLock(tree.index.shardOf(list).mutex);
        const Outcome outcome = acceptWrite(list, texts, accepted);
        if (!outcome.ok())
            return outcome;
    }
    if (list.backend) {
        Outcome outcome = writeTo(transaction.edit(*list.backend), list.getPath(), accepted, removed);
        if (!outcome.ok())
            return Refusals::unfit(std::move(outcome), accepted, !list.isReadable());
    }
    transaction.getNodes().setAttribute(list, std::move(accepted), list.getAccess());
    return {};
}

} // namespace Repository
