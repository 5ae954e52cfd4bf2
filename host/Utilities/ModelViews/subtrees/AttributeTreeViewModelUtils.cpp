#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/HostLog.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/ReadablePath.h"
#include "host/Utilities/ModelViews/TextFile.h"
#include "host/Utilities/ModelViews/Widgets/TransferWindow.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cctype>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using namespace FrameworkCore::AppConfig::Interfaces;
using Widgets::TransferWindow;

namespace {

// What is translated here; a free tr() would be listed under another name than it is looked up by.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::ModelViews::AttributeTreeViewModelUtils)
};

std::shared_ptr<TransferInterface> transferOf(const std::shared_ptr<RepositoryInterface>& repository)
{
    return repository ? repository->getTransferInterface() : nullptr;
}

// Null where the repository keeps no history.
std::unique_ptr<HistoryInterface::Step> beginStep(RepositoryInterface& repository, const QString& name)
{
    const auto history = repository.getHistoryInterface();
    return history ? history->beginStep(name) : nullptr;
}

bool isBlank(const QByteArray& bytes)
{
    const int begin = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0; // after the byte-order mark
    return std::all_of(bytes.begin() + begin, bytes.end(), [](char c) { return std::isspace(uchar(c)); });
}

// Why a transfer of a subtree did nothing.
QString reasonOf(const Outcome& outcome, const QString& path)
{
    if (outcome == StatusCode::Cancelled)
        return Texts::tr("it was cancelled");
    return outcome.get().subject == path ? outcome.explain() : outcome.toText();
}

bool exportTo(std::shared_ptr<RepositoryInterface> repository, const QString& fileName, const QString& type,
              const QString& path, QString& errorText)
{
    const auto transfer = transferOf(repository);
    const auto refused = [&](const QString& reason) {
        errorText = Texts::tr("%1 is not written: %2").arg(fileName, reason);
        return false;
    };
    if (!transfer)
        return refused(Texts::tr("this repository exports nothing"));
    QString fileError;
    const Outcome outcome = TransferWindow::run(
        Texts::tr("Exporting %1").arg(readablePath(path, *repository)), [&](TransferReport& running) {
            QByteArray text;
            Outcome exported = transfer->exportTree(path, type, text, running);
            if (running.isCancelled())
                return Outcome(StatusCode::Cancelled, {});
            if (!exported.ok())
                return exported;
            const auto readers =
                running.isPrivate() ? TextFile::Readers::OwnerOnly : TextFile::Readers::Usual;
            fileError = TextFile::writeBytes(fileName, text, readers);
            return exported;
        });
    if (!outcome.ok())
        return refused(reasonOf(outcome, path));
    errorText = fileError;
    return errorText.isEmpty();
}

} // namespace

AttributeTreeViewModelUtils::AttributeTreeViewModelUtils() : attributes(GetAppConfigRepositoryInterface())
{
}

QString AttributeTreeViewModelUtils::retriveAttributePathFromIndex(const QModelIndex& index) const
{
    QStringList names;
    for (QModelIndex item = index.siblingAtColumn(0); item.isValid(); item = item.parent())
        names.prepend(item.data(Qt::DisplayRole).toString());
    return names.join(FrameworkCore::AppConfig::pathSeparator);
}

QStringList AttributeTreeViewModelUtils::extractStringsFromModel(const QAbstractItemModel* model,
                                                                 const QModelIndex& parent) const
{
    if (const auto* const tree = qobject_cast<const AttributeTreeViewModel*>(model))
        return tree->childNames(parent); // at once, since there may be a million
    QStringList texts;
    const int count = model ? model->rowCount(parent) : 0;
    texts.reserve(count);
    for (int row = 0; row < count; ++row)
        texts.append(model->index(row, 0, parent).data(Qt::DisplayRole).toString());
    return texts;
}

bool AttributeTreeViewModelUtils::readTextFile(const QString& fileName, QString& content,
                                               QString& errorText) const
{
    errorText = TextFile::read(fileName, content);
    return errorText.isEmpty();
}

bool AttributeTreeViewModelUtils::writeTxtFile(const QString& text, const QString& fileName) const
{
    const QString error = TextFile::write(fileName, text);
    if (!error.isEmpty())
        logFailure(error);
    return error.isEmpty();
}

QString AttributeTreeViewModelUtils::TrimAttributeName(const QString& text, const QString& characters)
{
    int begin = 0;
    int end = text.size();
    while (begin < end && characters.contains(text.at(begin)))
        ++begin;
    while (begin < end && characters.contains(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

AccessMode AttributeTreeViewModelUtils::GetBackendAccessMode(const QString& text)
{
    if (text == QLatin1String("read-only"))
        return AccessMode::ReadOnly;
    if (text == QLatin1String("write-only"))
        return AccessMode::WriteOnly;
    if (text == QLatin1String("read-write"))
        return AccessMode::ReadWrite;
    return AccessMode::None;
}

bool AttributeTreeViewModelUtils::deleteAttributeTree(const QString& path) const
{
    const auto repository = attributes; // also when the page, and this object with it, is closed meanwhile
    const auto tree = repository ? repository->getTreeInterface() : nullptr;
    if (!tree) {
        logFailure(Texts::tr("'%1' is not deleted: this repository deletes nothing").arg(path));
        return false;
    }
    return TransferWindow::run(
               Texts::tr("Deleting %1").arg(readablePath(path, *repository)),
               [&](TransferReport&) {
                   const auto step = beginStep(
                       *repository, Texts::tr("Delete %1").arg(FrameworkCore::AppConfig::nameOf(path)));
                   return tree->removeTree(path);
               },
               TransferWindow::Cancelling::Impossible)
        .ok();
}

bool AttributeTreeViewModelUtils::copyAttribute(const QString& source, const QString& target) const
{
    const auto repository = attributes;
    const auto transfer = transferOf(repository);
    if (!transfer) {
        logFailure(Texts::tr("'%1' is not copied: this repository copies nothing").arg(source));
        return false;
    }
    return TransferWindow::run(Texts::tr("Copying %1 to %2")
                                   .arg(readablePath(source, *repository), readablePath(target, *repository)),
                               [&](TransferReport& running) {
                                   const auto step = beginStep(
                                       *repository,
                                       Texts::tr("Paste %1").arg(FrameworkCore::AppConfig::nameOf(target)));
                                   return transfer->copyTree(source, target, running);
                               })
        .ok();
}

bool AttributeTreeViewModelUtils::moveAttribute(const QString& source, const QString& target) const
{
    const auto repository = attributes;
    const auto transfer = transferOf(repository);
    if (!transfer) {
        logFailure(Texts::tr("'%1' is not moved: this repository moves nothing").arg(source));
        return false;
    }
    return TransferWindow::run(
               Texts::tr("Moving %1 to %2")
                   .arg(readablePath(source, *repository), readablePath(target, *repository)),
               [&](TransferReport&) {
                   const auto step = beginStep(
                       *repository, Texts::tr("Move %1").arg(FrameworkCore::AppConfig::nameOf(source)));
                   return transfer->moveTree(source, target);
               },
               TransferWindow::Cancelling::Impossible)
        .ok();
}

bool AttributeTreeViewModelUtils::exportAttributeToJson(const QString& fileName, const QString& path,
                                                        QString& errorText) const
{
    return exportTo(attributes, fileName, QStringLiteral("json"), path, errorText);
}

bool AttributeTreeViewModelUtils::exportAttributeToTxtFile(const QString& fileName, const QString& path,
                                                           QString& errorText) const
{
    return exportTo(attributes, fileName, QStringLiteral("txt"), path, errorText);
}

bool AttributeTreeViewModelUtils::importAttributeFromJson(const QString& fileName, const QString& path,
                                                          QString& errorText) const
{
    const auto repository = attributes;
    const auto transfer = transferOf(repository);
    const auto refused = [&](const QString& reason) {
        errorText = Texts::tr("%1 is not imported: %2").arg(fileName, reason);
        return false;
    };
    if (!transfer)
        return refused(Texts::tr("this repository imports nothing"));
    QByteArray text;
    errorText = TextFile::readBytes(fileName, text);
    if (!errorText.isEmpty())
        return false;
    if (isBlank(text))
        return refused(Texts::tr("the file is empty"));
    const Outcome outcome =
        TransferWindow::run(Texts::tr("Importing %1").arg(fileName), [&](TransferReport& running) {
            const auto step =
                beginStep(*repository, Texts::tr("Import %1").arg(QFileInfo(fileName).fileName()));
            return transfer->importTree(path, QStringLiteral("json"), text, running);
        });
    return outcome.ok() || refused(reasonOf(outcome, path));
}

} // namespace Utilities::ModelViews
