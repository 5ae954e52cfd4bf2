#include "fuzz/Exercises.h"
#include "fuzz/program/ScratchFolder.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Shared/Logging/LogRecord.h"
#include "repository/AttributeRepository.h"
#include "repository/common/PathRules.h"
#include "repository/documents/Formats.h"

#include <algorithm>

namespace Fuzz {

using FrameworkCore::Values::decodeUtf8;
using namespace FrameworkCore::AppConfig;
using Repository::AttributeRepository;
using Repository::Documents::Entry;

namespace {

constexpr std::size_t headSize = 3;
constexpr int createOnly = 2;

// What the tree holds: each node's path, type and value, in its order.
using Snapshot = QStringList;

// What a file holds before something is imported into it, by type.
QByteArray presentContent(const std::string& type)
{
    if (type == "json")
        return "{\n    \"a\": {\"b\": 1, \"list\": [true, null]},\n    \"k\": \"text\" // kept\n}\n";
    if (type == "xml")
        return "<r a='1'>\n  <k>text</k><k/>\n</r>\n";
    if (type == "toml")
        return "# kept\nk = 'text'\n[a]\nb = 1\n[[t]]\n";
    if (type == "yaml")
        return "# kept\nk: 'text'\na:\n  b: 1\nl:\n- 1\n- c: x\n";
    if (type == "ini")
        return "; kept\nk = text\n[a]\nb = 1\n[a.c]\n";
    return "# kept\nk = text\na.b = 1\n";
}

// An empty group exists in files that have a place for it only.
Snapshot withoutGroups(Snapshot snapshot)
{
    const auto isGroup = [](const QString& line) { return line.endsWith(QLatin1Char('\1')); };
    snapshot.erase(std::remove_if(snapshot.begin(), snapshot.end(), isGroup), snapshot.end());
    return snapshot;
}

// A name that says which of several it is, without the others, is spelled as a name with brackets.
Snapshot plainly(Snapshot snapshot)
{
    return snapshot.replaceInStrings(QStringLiteral("%5D"), QStringLiteral("]"));
}

Snapshot sorted(Snapshot snapshot)
{
    snapshot.sort();
    return snapshot;
}

// Of what is mounted at "to": history records nothing else.
Snapshot inFile(const Snapshot& snapshot)
{
    Snapshot kept;
    for (const QString& line : snapshot) {
        if (Repository::isAtOrBelow(line.left(line.indexOf(QLatin1Char('\1'))), u"to"))
            kept.append(line);
    }
    return sorted(kept);
}

QString firstDifference(const Snapshot& now, const Snapshot& expected)
{
    int at = 0;
    while (at < now.size() && at < expected.size() && now.at(at) == expected.at(at))
        ++at;
    return QStringLiteral("'%1' instead of '%2'").arg(now.value(at), expected.value(at));
}

class ImportExercise
{
public:
    explicit ImportExercise(std::string_view input) : text(input.substr(headSize))
    {
        const auto& types = Repository::Documents::getDocumentTypes();
        const auto choose = [&](std::size_t at, std::size_t count) {
            return std::size_t(static_cast<unsigned char>(input[at] - '0')) % count;
        };
        type = types[choose(0, types.size())];
        const std::size_t target = choose(1, 2 * types.size() + 1);
        if (target > 0) {
            targetType = types[(target - 1) / 2];
            isFileThere = target % 2 == 0;
            fileName = QStringLiteral("target.") + QString::fromStdString(targetType);
        }
        static const char* const places[] = {"to", "to.a", "to.new.place", "to.k", "", "to..a", "to.a.b"};
        path = QLatin1String(places[choose(2, std::size(places))]);
    }

    std::string run()
    {
        repository->getHistoryInterface()->recordThisThread();
        mount(*repository);
        before = snapshotOf(*repository, QString());
        diffBefore = diff();
        const quint64 loggedBefore = Shared::Logging::LogRecord::instance().getLastNumber();
        Interfaces::TransferReport report;
        const auto outcome = repository->getTransferInterface()->importTree(
            path, QString::fromStdString(type), QByteArray(text.data(), int(text.size())), report);
        after = snapshotOf(*repository, QString());
        QString broken;
        if (outcome.ok())
            broken = checkTaken();
        else if (after != before || diff() != diffBefore)
            broken =
                QStringLiteral("a refused import has changed something: ") + firstDifference(after, before);
        else if (outcome.explain().isEmpty() ||
                 Shared::Logging::LogRecord::instance().getLastNumber() == loggedBefore)
            broken = QStringLiteral("a refusal has no reason");
        if (broken.isEmpty())
            return {};
        return QStringLiteral("%1 into %2 at '%3': %4")
            .arg(QString::fromStdString(type),
                 targetType.empty() ? QStringLiteral("memory") : QString::fromStdString(targetType), path,
                 broken)
            .toStdString();
    }

private:
    bool mount(AttributeRepository& where) const
    {
        if (targetType.empty())
            return true;
        if (&where == repository.get()) {
            ScratchFolder::instance().clear();
            if (isFileThere)
                ScratchFolder::instance().write(fileName, presentContent(targetType));
        }
        return where.getBackendInterface()->createBackend(
            QString::fromStdString(targetType), QStringLiteral("to"),
            {ScratchFolder::instance().path(fileName), QString(), AccessMode::ReadWrite}, createOnly);
    }

    static Snapshot snapshotOf(AttributeRepository& shown, const QString& root)
    {
        Snapshot snapshot;
        const QStringList paths = shown.getTreeInterface()->findPaths(
            {root.isEmpty() ? QStringLiteral("*") : root + QLatin1Char('*')});
        for (const QString& each : paths) {
            if (Repository::isAtOrBelow(each, Repository::ownRoot))
                continue;
            QString line = each.mid(root.size()) + QLatin1Char('\1');
            if (const auto attribute = shown.getReaderInterface()->getAttribute(each)) {
                const auto value = FrameworkCore::Values::toValue(attribute->getValue());
                line += QString::number(int(value.type)) + QLatin1Char(' ') +
                        decodeUtf8(FrameworkCore::Values::toText(value));
            }
            snapshot.append(line);
        }
        return snapshot;
    }

    QString diff() const
    {
        QString unsaved;
        repository->getChangesInterface()->getUnsavedDiff(QStringLiteral("to"), unsaved);
        return unsaved;
    }

    QString checkTaken() const
    {
        for (const auto check : {&ImportExercise::checkEntries, &ImportExercise::checkUndo,
                                 &ImportExercise::checkFile, &ImportExercise::checkExport}) {
            const QString broken = (this->*check)();
            if (!broken.isEmpty())
                return broken;
        }
        return {};
    }

    // Each entry of the text is in the tree, with its value.
    QString checkEntries() const
    {
        const auto* format = Repository::Documents::findFormat(type);
        const auto document = format->makeDocument();
        if (!document->parse(std::string(text)).ok())
            return QStringLiteral("a text that cannot be parsed is taken");
        QString broken;
        format->visitImport(*document, [&](const Entry& entry) {
            if (!broken.isEmpty() || entry.value.type == FrameworkCore::Values::Type::Group)
                return;
            const QString full = Repository::joinedPath(path, entry.path);
            const auto attribute = repository->getReaderInterface()->getAttribute(full);
            const QVariant wanted = FrameworkCore::Values::toVariant(entry.value);
            if (!attribute)
                broken = QStringLiteral("'%1' is not there").arg(full);
            else if (isFileThere ? !isSameAsText(attribute->getValue(), wanted)
                                 : !isSame(attribute->getValue(), wanted))
                broken = QStringLiteral("'%1' is %2").arg(full, attribute->getValue().toString());
        });
        return broken;
    }

    static bool isSame(const QVariant& a, const QVariant& b)
    {
        const auto first = FrameworkCore::Values::toValue(a);
        const auto second = FrameworkCore::Values::toValue(b);
        return first.type == second.type &&
               FrameworkCore::Values::toText(first) == FrameworkCore::Values::toText(second);
    }

    // An attribute that was there keeps its type.
    static bool isSameAsText(const QVariant& a, const QVariant& b)
    {
        const auto converted = FrameworkCore::Values::convertVariant(b, a.userType());
        return isSame(a, b) || (converted && isSame(a, *converted));
    }

    // What happens in files is one step, which can be taken back and done again.
    QString checkUndo() const
    {
        const auto history = repository->getHistoryInterface();
        if (history->getUndoName().isEmpty())
            return targetType.empty() || inFile(after) == inFile(before)
                       ? QString()
                       : QStringLiteral("it cannot be undone");
        const QString diffAfter = diff();
        if (history->undo() != StatusCode::Success || !history->getUndoName().isEmpty())
            return QStringLiteral("undoing it fails");
        const Snapshot undone = inFile(snapshotOf(*repository, QString()));
        if (diff() != diffBefore || undone != inFile(before))
            return QStringLiteral("undoing it leaves ") + firstDifference(undone, inFile(before)) + diff();
        if (history->redo() != StatusCode::Success)
            return QStringLiteral("redoing it fails");
        const Snapshot redone = inFile(snapshotOf(*repository, QString()));
        if (diff() != diffAfter || redone != inFile(after))
            return QStringLiteral("redoing it gives ") + firstDifference(redone, inFile(after)) + diff();
        return {};
    }

    // What a document took can be saved, and read again.
    QString checkFile() const
    {
        if (targetType.empty())
            return {};
        if (!repository->getBackendInterface()->saveBackend(QStringLiteral("to")))
            return QStringLiteral("it cannot be saved");
        const auto later = AttributeRepository::create({false});
        const bool isEmpty = !ScratchFolder::instance().names().contains(fileName);
        if (!isEmpty && !mount(*later))
            return QStringLiteral("what was saved cannot be read:\n") +
                   QString::fromUtf8(ScratchFolder::instance().read(fileName));
        const QString root = QStringLiteral("to.");
        const Snapshot shown = sorted(snapshotOf(*repository, root));
        const Snapshot read = isEmpty ? Snapshot() : sorted(snapshotOf(*later, root));
        if (read != shown)
            return QStringLiteral("reading the file gives ") + firstDifference(read, shown);
        return {};
    }

    // Exported and imported into an empty place, it is the same there.
    QString checkExport() const
    {
        if (!targetType.empty() || path.isEmpty())
            return {};
        const Snapshot shown = sorted(plainly(withoutGroups(snapshotOf(*repository, path))));
        const auto transfer = repository->getTransferInterface();
        for (const std::string& each : {type, std::string("json")}) {
            const QString form = QString::fromStdString(each);
            QByteArray exported;
            if (transfer->exportTree(path, form, exported) != StatusCode::Success)
                continue;
            const auto other = AttributeRepository::create({false});
            if (other->getTransferInterface()->importTree(path, form, exported) != StatusCode::Success)
                return QStringLiteral("its export to %1 is refused:\n%2")
                    .arg(form, QString::fromUtf8(exported));
            const Snapshot again = sorted(plainly(withoutGroups(snapshotOf(*other, path))));
            if (again != shown)
                return QStringLiteral("its export to %1 gives %2\n%3")
                    .arg(form, firstDifference(again, shown), QString::fromUtf8(exported));
        }
        return {};
    }

    const std::string_view text;
    std::string type;
    std::string targetType; // empty for memory
    bool isFileThere = false;
    QString path;
    QString fileName; // which tells its type, since a text that says otherwise is not saved
    const std::shared_ptr<AttributeRepository> repository = AttributeRepository::create({false});
    Snapshot before;
    QString diffBefore;
    Snapshot after;
};

} // namespace

std::string exerciseImports(std::string_view input)
{
    return input.size() < headSize ? std::string() : ImportExercise(input).run();
}

} // namespace Fuzz
