#include "repository/transfer/SubtreeTransfer.h"

#include "repository/common/Border.h"
#include "repository/common/Texts.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/BackendLookup.h"
#include "repository/transfer/SubtreeCopy.h"
#include "repository/transfer/SubtreeExport.h"
#include "repository/transfer/SubtreeImport.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using Operation = Outcome::Operation;

Outcome SubtreeTransfer::copyTree(const QString& from, const QString& to)
{
    TransferReport report;
    return copyTree(from, to, report);
}

Outcome SubtreeTransfer::copyTree(const QString& from, const QString& to, TransferReport& report)
{
    const auto name = [&] {
        return Texts::tr("Copy %1 to %2")
            .arg(readablePath(*store->getTree(), from), readablePath(*store->getTree(), to));
    };
    const auto copy = [&](Transaction& transaction) {
        return SubtreeCopy(transaction, from, to).run(false, report);
    };
    return runForCaller(Operation::Change, to, [&] { return store->change(name, copy); });
}

Outcome SubtreeTransfer::moveTree(const QString& from, const QString& to)
{
    TransferReport report;
    const auto name = [&] {
        return Texts::tr("Move %1 to %2")
            .arg(readablePath(*store->getTree(), from), readablePath(*store->getTree(), to));
    };
    const auto move = [&](Transaction& transaction) {
        return SubtreeCopy(transaction, from, to).run(true, report);
    };
    return runForCaller(Operation::Change, to, [&] { return store->changeAll(name, {from, to}, move); });
}

Outcome SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text)
{
    TransferReport report;
    return exportTree(path, type, text, report);
}

Outcome SubtreeTransfer::exportTree(const QString& path, const QString& type, QByteArray& text,
                                    TransferReport& report)
{
    return runForCaller(Operation::Change, path,
                        [&] { return SubtreeExport(*store->getTree(), path, type).run(text, report); });
}

Outcome SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text)
{
    TransferReport report;
    return importTree(path, type, text, report);
}

Outcome SubtreeTransfer::importTree(const QString& path, const QString& type, const QByteArray& text,
                                    TransferReport& report)
{
    return runForCaller(Operation::Change, path,
                        [&] { return SubtreeImport(*store, path, type).run(text, report); });
}

} // namespace Repository
