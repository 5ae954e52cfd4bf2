#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/TreeWalk.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"

#include <QHash>

namespace CommandLine::Commands {

namespace {

struct Attribute
{
    QString path; // relative to what is compared; empty for that itself
    QVariant value;
    QString text; // of the value
    QString type;
};

using Attributes = std::vector<Attribute>;

// In the order of the file.
Attributes collect(Session& session, const QString& root, const Records& records)
{
    auto& repository = session.getRepository();
    Attributes found;
    const auto add = [&](const QString& path) {
        const auto attribute = repository.getReaderInterface()->getAttribute(path);
        if (attribute && isReadable(attribute->getAccessMode())) {
            const QVariant value = attribute->getValue();
            found.push_back(
                {path.mid(root.size() + 1), value, records.valueText(value), TypedText::nameOf(value)});
        }
        return true;
    };
    add(root);
    visitBelow(*repository.getTreeInterface(), root, add);
    return found;
}

class DifferencePrinter
{
public:
    explicit DifferencePrinter(Records& printedRecords) : records(printedRecords) {}

    // One of the two may be null.
    void print(const Attribute* mine, const Attribute* other)
    {
        differ = true;
        if (records.areJson()) {
            printJson(mine, other);
            return;
        }
        const bool tellsType = mine && other && mine->text == other->text;
        if (mine)
            records.add(textOf('-', *mine, tellsType));
        if (other)
            records.add(textOf('+', *other, tellsType));
    }

    bool haveDiffered() const { return differ; }

private:
    static QString textOf(char sign, const Attribute& attribute, bool tellsType)
    {
        const QString text =
            QStringLiteral("%1 %2 = %3").arg(QLatin1Char(sign)).arg(attribute.path, attribute.text);
        return tellsType ? text + QStringLiteral(" (%1)").arg(attribute.type) : text;
    }

    void printJson(const Attribute* mine, const Attribute* other)
    {
        const QString change = !mine    ? QStringLiteral("created")
                               : !other ? QStringLiteral("removed")
                                        : QStringLiteral("changed");
        Records::Fields fields{{"change", change}, {"path", (mine ? mine : other)->path}};
        if (mine)
            fields.insert(fields.end(), {{"typeBefore", mine->type}, {"before", mine->value}});
        if (other)
            fields.insert(fields.end(), {{"typeAfter", other->type}, {"after", other->value}});
        records.add(fields);
    }

    Records& records; // not owned
    bool differ = false;
};

// Formats do not have the same types, so types count only where they do.
bool printDifferences(const Attributes& left, const Attributes& right, bool typesCount, Records& records)
{
    QHash<QString, const Attribute*> others;
    for (const Attribute& attribute : right)
        others.insert(attribute.path, &attribute);
    DifferencePrinter printer(records);
    for (const Attribute& mine : left) {
        const Attribute* other = others.take(mine.path);
        if (!other || mine.text != other->text || (typesCount && mine.type != other->type))
            printer.print(&mine, other);
    }
    for (const Attribute& attribute : right) {
        if (others.contains(attribute.path))
            printer.print(nullptr, &attribute);
    }
    return printer.haveDiffered();
}

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
    const bool differ = printDifferences(collect(session, left->fullPath(leftPath), records),
                                         collect(session, right->fullPath(rightPath), records),
                                         left->family() == right->family(), records);
    return differ ? ExitCode::Negative : ExitCode::Done;
}

} // namespace

Command diff()
{
    return {"diff",
            "compare two files by attribute",
            "Order, comments and spelling do not count, nor, between files of different formats, types. "
            "\"-\" begins what the first file holds, \"+\" what the second holds. With paths, only what is "
            "below them is compared. The exit code is 1 when there is a difference.\n"
            "With --json: an array of objects with \"change\" (changed, created or removed), \"path\", and "
            "\"typeBefore\", \"before\", \"typeAfter\" and \"after\" as far as there are any.",
            {{{"FILE", Word::File}, {"FILE", Word::File}},
             {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}},
            {toFormatOption, jsonOption, nullOption},
            {"vantry diff old.ini new.json", "vantry diff app.xml config app.json ''"},
            run};
}

} // namespace CommandLine::Commands
