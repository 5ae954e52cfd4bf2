#include "cli/DocumentFile.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/TreeWalk.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/documents/Formats.h"

#include <QHash>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::Values::Type;
using Repository::Documents::Entry;

// One entry of what is compared, with a path relative to that.
struct Compared
{
    QString path;
    QVariant value;
    QString text; // of the value
    QString type; // of a group what it is
    bool isGroup;
    bool isEmpty; // nothing is below it
};

// What of a file is compared, in its order.
class Content
{
public:
    // Only what may be read.
    Content(Session& session, const Source& source, const QString& path, const Records& printedRecords)
        : records(printedRecords), format(Repository::Documents::findFormat(source.format.toStdString())),
          top(path.toStdString())
    {
        const QString fullPath = source.fullPath(path);
        const auto node = session.getRepository().getTreeInterface()->getNodeInformation(fullPath);
        if (!isReadable(node.accessMode))
            return;
        if (format)
            readFile(session, source, node, fullPath);
        else
            readTree(session.getRepository(), source, fullPath);
        findEmptyGroups();
    }

    const QString& getFailure() const { return failure; }
    const std::vector<Compared>& getEntries() const { return entries; }
    bool canTellArrays() const { return tellsArrays; }

    bool canHoldEmptyGroups() const { return !format || format->makeDocument()->insert("group", {}).ok(); }

private:
    void readFile(Session& session, const Source& source, const Session::NodeInformation& node,
                  const QString& fullPath)
    {
        DocumentFile file = DocumentFile::read(source.absolutePath, source.format);
        file.name = source.given;
        failure = file.document ? QString() : file.explain();
        if (!file.document)
            return;
        tellsArrays = file.document->isArray({}).has_value();
        format->visitImport(*file.document, [this](const Entry& entry) { add(entry); });
        QVariant element;
        auto& reader = *session.getRepository().getReaderInterface();
        if (entries.empty() && node.isAttribute && reader.readAttributeValue(fullPath, element, 0) == 0)
            add({top, FrameworkCore::Values::toValue(element)});
    }

    // Of a store, which has no text.
    void readTree(Session::RepositoryInterface& repository, const Source& source, const QString& fullPath)
    {
        const auto tree = repository.getTreeInterface();
        const auto addNode = [&](const QString& path) {
            Entry entry{source.relativePath(path).toStdString(), {}};
            QVariant value;
            if (tree->getNodeInformation(path).isAttribute &&
                repository.getReaderInterface()->readAttributeValue(path, value, 0) == 0)
                entry.value = FrameworkCore::Values::toValue(value);
            add(entry);
            return true;
        };
        if (tree->getNodeInformation(fullPath).isAttribute)
            addNode(fullPath);
        visitBelow(*tree, fullPath, addNode);
    }

    void add(const Entry& entry)
    {
        const bool isTop = entry.path == top;
        if (!isTop && !top.empty() && entry.path.compare(0, top.size() + 1, top + '.') != 0)
            return;
        const std::size_t start = isTop ? top.size() : top.size() + (top.empty() ? 0 : 1);
        const QString path = QString::fromStdString(entry.path.substr(start));
        const bool isGroup = entry.value.type == Type::Group;
        const QVariant attribute = FrameworkCore::Values::toVariant(entry.value);
        const QVariant value =
            FrameworkCore::Values::isFinerThanAttributes(entry.value)
                ? QVariant(QString::fromStdString(FrameworkCore::Values::toText(entry.value)))
                : attribute;
        entries.push_back({path, value, isGroup ? QString() : records.valueText(value),
                           isGroup
                               ? (entry.isArray == true ? QStringLiteral("array") : QStringLiteral("group"))
                               : TypedText::nameOf(attribute),
                           isGroup, true});
    }

    // What lies in a group need not come right after it.
    void findEmptyGroups()
    {
        QHash<QStringView, Compared*> groups;
        for (Compared& entry : entries) {
            if (entry.isGroup)
                groups.insert(entry.path, &entry);
        }
        for (const Compared& entry : entries) {
            QStringView path = entry.path;
            while (!path.isEmpty()) {
                path = FrameworkCore::AppConfig::parentPath(path);
                if (Compared* const group = groups.take(path))
                    group->isEmpty = false;
            }
        }
    }

    const Records& records;                            // not owned
    const Repository::Documents::Format* const format; // null for a store
    const std::string top;
    std::vector<Compared> entries;
    bool tellsArrays = false;
    QString failure;
};

QString lineOf(char sign, const Compared& entry, bool tellsType)
{
    const QString line = QStringLiteral("%1 %2")
                             .arg(QLatin1Char(sign))
                             .arg(entry.path.isEmpty() ? QStringLiteral(".") : entry.path);
    if (entry.isGroup)
        return line + QStringLiteral(" (%1)").arg(entry.isEmpty ? QStringLiteral("empty ") + entry.type
                                                                : entry.type);
    const QString value = QStringLiteral("%1 = %2").arg(line, entry.text);
    return tellsType ? QStringLiteral("%1 (%2)").arg(value, entry.type) : value;
}

// One of the two may be null.
Records::Fields fieldsOf(const Compared* mine, const Compared* other)
{
    const QString change = !mine    ? QStringLiteral("created")
                           : !other ? QStringLiteral("removed")
                                    : QStringLiteral("changed");
    Records::Fields fields{{"change", change}, {"path", (mine ? mine : other)->path}};
    if (mine)
        fields.emplace_back("typeBefore", mine->type);
    if (mine && !mine->isGroup)
        fields.emplace_back("before", mine->value);
    if (other)
        fields.emplace_back("typeAfter", other->type);
    if (other && !other->isGroup)
        fields.emplace_back("after", other->value);
    return fields;
}

// Says what differs, as far as both formats can tell it.
class Comparison
{
public:
    Comparison(const Content& leftContent, const Content& rightContent, Records& printedRecords)
        : records(printedRecords), left(leftContent), right(rightContent),
          arraysCount(left.canTellArrays() && right.canTellArrays()),
          emptyGroupsCount(left.canHoldEmptyGroups() && right.canHoldEmptyGroups())
    {
    }

    bool print() const
    {
        QHash<QString, const Compared*> others;
        for (const Compared& entry : right.getEntries())
            others.insert(entry.path, &entry);
        bool differ = false;
        for (const Compared& mine : left.getEntries()) {
            const Compared* const other = others.take(mine.path);
            if (other ? isSame(mine, *other) : !isSeenAlone(mine))
                continue;
            differ = true;
            print(&mine, other);
        }
        for (const Compared& entry : right.getEntries()) {
            if (others.contains(entry.path) && isSeenAlone(entry)) {
                differ = true;
                print(nullptr, &entry);
            }
        }
        return differ;
    }

private:
    void print(const Compared* mine, const Compared* other) const
    {
        if (records.areJson()) {
            records.add(fieldsOf(mine, other));
            return;
        }
        const bool tellsType = mine && other && mine->text == other->text;
        if (mine)
            records.add(lineOf('-', *mine, tellsType));
        if (other)
            records.add(lineOf('+', *other, tellsType));
    }

    bool isSame(const Compared& a, const Compared& b) const
    {
        if (a.isGroup && b.isGroup)
            return !arraysCount || a.type == b.type;
        if (a.isGroup || b.isGroup)
            return false;
        return a.text == b.text && a.type == b.type;
    }

    // Whether the entry makes a difference where the other file has nothing: a group with others below is
    // seen by these.
    bool isSeenAlone(const Compared& entry) const
    {
        return !entry.isGroup || (entry.isEmpty && emptyGroupsCount);
    }

    Records& records; // not owned
    const Content& left;
    const Content& right;
    const bool arraysCount;
    const bool emptyGroupsCount;
};

ExitCode run(Session& session, const Invocation& invocation)
{
    const bool hasPaths = invocation.arguments.size() == 4;
    const QString secondFile = invocation.arguments.at(hasPaths ? 2 : 1);
    const Source* left = session.open(invocation.arguments.at(0), Session::Opening::Read);
    const Source* right = left ? session.open(secondFile, Session::Opening::Read, "--to-format") : nullptr;
    if (!right)
        return session.getFailure();
    const QString leftPath = hasPaths ? invocation.arguments.at(1) : QString();
    const QString rightPath = hasPaths ? invocation.arguments.at(3) : QString();
    if (!session.find(*left, leftPath).exists || !session.find(*right, rightPath).exists)
        return ExitCode::Negative;
    Records records(invocation);
    const Content leftContent(session, *left, left->relativePath(left->fullPath(leftPath)), records);
    const Content rightContent(session, *right, right->relativePath(right->fullPath(rightPath)), records);
    for (const Content* const content : {&leftContent, &rightContent}) {
        if (!content->getFailure().isEmpty())
            return Session::fail(ExitCode::BadFile, content->getFailure());
    }
    return Comparison(leftContent, rightContent, records).print() ? ExitCode::Negative : ExitCode::Done;
}

} // namespace

Command diff()
{
    return {
        "diff",
        QT_TRANSLATE_NOOP("CommandLine", "compare two files by attribute"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Order, comments and spelling do not count. A type does: 8080 is not the text \"8080\". An array "
            "is "
            "another thing than a group of the same names, and an empty group than nothing, unless one of "
            "two "
            "formats cannot tell. "
            "\"-\" begins what the first file holds, \"+\" what the second holds. With paths, only what is "
            "below them is compared. The exit code is 1 when there is a difference.\n"
            "With --json: an array of objects with \"change\" (changed, created or removed), \"path\", and "
            "\"typeBefore\", \"before\", \"typeAfter\" and \"after\" as far as there are any."),
        {{{"FILE", Word::File}, {"FILE", Word::File}},
         {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}},
        {toFormatOption, jsonOption, nullOption},
        {"vantry diff old.ini new.json", "vantry diff app.xml config app.json ''"},
        run};
}

} // namespace CommandLine::Commands
