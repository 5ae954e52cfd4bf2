#include "desk/files/KeptChangesMerge.h"

#include "desk/common/ReadableText.h"
#include "host/FrameworkCore/Values/VariantValue.h"

namespace Vantry {

using FrameworkCore::Values::isSameValue;
using Kind = FrameworkCore::AppConfig::Interfaces::UnsavedChange::Kind;

KeptChangesMerge::KeptChangesMerge(std::shared_ptr<Repository> attributes, QString openBackend,
                                   KeptChanges::Changes kept)
    : repository(std::move(attributes)), backend(std::move(openBackend)), changes(std::move(kept))
{
    for (const UnsavedChange& change : changes)
        states.append(stateOf(change));
}

QString KeptChangesMerge::pathOf(const UnsavedChange& change) const
{
    return change.path.isEmpty() ? backend : repository->buildAttributePath({backend, change.path});
}

bool KeptChangesMerge::isThere(const QString& path) const
{
    return repository->getTreeInterface()->getNodeInformation(path).isAttribute;
}

QVariant KeptChangesMerge::valueAt(const QString& path) const
{
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(path, value, 0);
    return value;
}

KeptChangesMerge::State KeptChangesMerge::stateOf(const UnsavedChange& change) const
{
    const QString path = pathOf(change);
    const bool isNowThere = isThere(path);
    const QVariant now = valueAt(path);
    const auto holds = [&](bool isExpectedThere, const QVariant& expected) {
        return isNowThere == isExpectedThere && (!isNowThere || isSameValue(now, expected));
    };
    if (holds(change.kind != Kind::Removed, change.after))
        return State::Done;
    const bool isAsThen = !change.isConflict && holds(change.kind != Kind::Created, change.before);
    return isAsThen ? State::Free : State::Conflict;
}

QVector<KeptChangesMerge::UnsavedChange> KeptChangesMerge::getConflicts() const
{
    QVector<UnsavedChange> conflicts;
    for (int number = 0; number < changes.size(); ++number) {
        if (states[number] != State::Conflict)
            continue;
        UnsavedChange conflict = changes[number];
        conflict.path = pathOf(conflict);
        conflict.before = valueAt(conflict.path);
        conflict.isConflict = true;
        if (conflict.kind != Kind::Removed)
            conflict.kind = isThere(conflict.path) ? Kind::Changed : Kind::Created;
        conflicts.append(conflict);
    }
    return conflicts;
}

KeptChanges::Changes KeptChangesMerge::apply(const Choices& choices)
{
    QVector<bool> isLeft(changes.size(), false);
    const auto take = [&](int number) {
        const UnsavedChange& change = changes[number];
        const auto choice = choices.constFind(pathOf(change));
        const bool isChosen = choice != choices.constEnd();
        if (states[number] == State::Conflict && !isChosen)
            isLeft[number] = true;
        else if (states[number] == State::Free || (isChosen && *choice == ConflictSide::Mine))
            isLeft[number] = !make(change);
    };
    // What lies below goes before what lies above, and makes room for what comes.
    for (int number = changes.size() - 1; number >= 0; --number) {
        if (changes[number].kind == Kind::Removed)
            take(number);
    }
    for (int number = 0; number < changes.size(); ++number) {
        if (changes[number].kind != Kind::Removed)
            take(number);
    }
    KeptChanges::Changes left;
    for (int number = 0; number < changes.size(); ++number) {
        if (isLeft[number])
            left.append(changes[number]);
    }
    return left;
}

bool KeptChangesMerge::make(const UnsavedChange& change)
{
    const QString path = pathOf(change);
    const auto tree = repository->getTreeInterface();
    if (change.kind == Kind::Removed && tree->getChildCount(path) > 0)
        return false;
    const auto writer = repository->getWriterInterface();
    const auto outcome = change.kind == Kind::Removed ? tree->removeTree(path)
                         : isThere(path)              ? writer->retype(path, change.after)
                                                      : writer->create(path, change.after, 3, 3);
    if (!outcome.ok())
        reasons.append(readableText(outcome, *repository));
    return outcome.ok();
}

} // namespace Vantry
