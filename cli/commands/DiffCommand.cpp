#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <QHash>

namespace CommandLine::Commands {

using FrameworkCore::AppConfig::joinedPath;

namespace {

struct Attribute
{
    QString path; // relative to what is compared; empty for that itself
    QString value;
    QString type;
};

using Attributes = std::vector<Attribute>;

// In the order of the file.
void collect(Session& session, const QString& fullPath, const QString& path, Attributes& found)
{
    auto& repository = session.getRepository();
    const auto attribute = repository.getReaderInterface()->getAttribute(fullPath);
    if (attribute && isReadable(attribute->getAccessMode()))
        found.push_back(
            {path, Output::valueInLine(attribute->getValue()), TypedText::nameOf(attribute->getValue())});
    const QStringList names = repository.getTreeInterface()->getChildNames(fullPath);
    for (const QString& name : names)
        collect(session, joinedPath(fullPath, name), joinedPath(path, name), found);
}

QString lineOf(char sign, const Attribute& attribute, bool tellsType)
{
    QString line = QStringLiteral("%1 %2 = %3").arg(QLatin1Char(sign)).arg(attribute.path, attribute.value);
    if (tellsType)
        line += QStringLiteral(" (%1)").arg(attribute.type);
    return line;
}

// Formats do not have the same types, so types count only where they do.
bool printDifferences(const Attributes& left, const Attributes& right, bool typesCount)
{
    QHash<QString, const Attribute*> others;
    for (const Attribute& attribute : right)
        others.insert(attribute.path, &attribute);
    bool differ = false;
    for (const Attribute& mine : left) {
        const Attribute* other = others.take(mine.path);
        const bool isTypeNews = other && mine.value == other->value;
        if (isTypeNews && (!typesCount || mine.type == other->type))
            continue;
        differ = true;
        Output::line(lineOf('-', mine, isTypeNews));
        if (other)
            Output::line(lineOf('+', *other, isTypeNews));
    }
    for (const Attribute& attribute : right) {
        if (others.contains(attribute.path)) {
            differ = true;
            Output::line(lineOf('+', attribute, false));
        }
    }
    return differ;
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
    Attributes leftAttributes;
    collect(session, left->fullPath(leftPath), {}, leftAttributes);
    Attributes rightAttributes;
    collect(session, right->fullPath(rightPath), {}, rightAttributes);
    const bool differ = printDifferences(leftAttributes, rightAttributes, left->family() == right->family());
    return differ ? ExitCode::Negative : ExitCode::Done;
}

} // namespace

Command diff()
{
    return {"diff",
            "compare two files by attribute",
            "Order, comments and spelling do not count, nor, between files of different formats, types. "
            "\"-\" begins what the first file holds, \"+\" what the second holds. With paths, only what is "
            "below them is compared. The exit code is 1 when there is a difference.",
            {{{"FILE", Word::File}, {"FILE", Word::File}},
             {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}},
            {toFormatOption},
            {"vantry diff old.ini new.json", "vantry diff app.xml config app.json ''"},
            run};
}

} // namespace CommandLine::Commands
