#include "cli/Records.h"

#include "cli/Output.h"
#include "cli/TypedText.h"

#include <QStringList>

namespace CommandLine {

using FrameworkCore::AppConfig::isReadable;

Records::Records(const Invocation& invocation, Ending ending)
    : isJson(invocation.has("--json")), isNull(invocation.has("--null")),
      isArray(isJson && !isNull && ending == Ending::Array)
{
}

Records::~Records()
{
    if (isArray)
        Output::bytes(isFirst ? "[]\n" : "\n]\n");
}

QString Records::valueText(const QVariant& value) const
{
    return isNull ? QString::fromStdString(Output::valueText(value)) : Output::valueInLine(value);
}

void Records::add(const QString& text)
{
    if (isNull)
        Output::bytes(text.toStdString() + '\0');
    else
        Output::line(text);
}

void Records::addJson(const QString& json)
{
    std::string text = json.toStdString();
    if (isArray)
        text.insert(0, isFirst ? "[\n" : ",\n");
    else
        text += isNull ? '\0' : '\n';
    isFirst = false;
    Output::bytes(text);
}

void Records::addNode(RepositoryInterface& repository, const Source& source, const QString& fullPath)
{
    const QString path = source.relativePath(fullPath);
    if (!isJson)
        return add(path);
    Fields fields{{"path", path}};
    appendValue(fields, repository, fullPath);
    add(fields);
}

QString Records::objectOf(const Fields& fields)
{
    QStringList members;
    for (const auto& [name, value] : fields)
        members.append(QStringLiteral("\"%1\": ").arg(QLatin1String(name)) + TypedText::toJson(value));
    return QLatin1Char('{') + members.join(QStringLiteral(", ")) + QLatin1Char('}');
}

void Records::appendValue(Fields& fields, RepositoryInterface& repository, const QString& fullPath)
{
    const auto attribute = repository.getReaderInterface()->getAttribute(fullPath);
    if (!attribute)
        fields.emplace_back("type", QStringLiteral("group"));
    if (!attribute || !isReadable(attribute->getAccessMode()))
        return;
    const QVariant value = attribute->getValue();
    fields.emplace_back("type", TypedText::nameOf(value));
    fields.emplace_back("value", value);
}

} // namespace CommandLine
