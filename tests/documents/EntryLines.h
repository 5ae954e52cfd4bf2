#pragma once

#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/Formats.h"

#include <QString>
#include <QStringList>
#include <QTest>

// Documents as text, to be written and compared in tables of tests: one line an entry, as in "a.b = 5".
namespace EntryLines {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Repository::Documents::Document;
using Repository::Documents::Entry;

inline Value group()
{
    return {};
}
inline Value null()
{
    return {Type::Null, {}};
}
inline Value boolean(bool truth)
{
    return {Type::Bool, truth};
}
inline Value integer(std::int64_t number)
{
    return {Type::Integer, number};
}
inline Value number(double number)
{
    return {Type::Double, number};
}
inline Value text(std::string text)
{
    return {Type::String, std::move(text)};
}
inline Value list(std::vector<std::string> texts)
{
    return {Type::StringList, std::move(texts)};
}

// 5, 5u, 5.0d, true, null, 'text', ['a','b'], {} for a group; what other types hold, in the form of their
// type.
inline QString toLine(const Value& value)
{
    const auto quoted = [](const std::string& text) {
        const QString oneLine = QString::fromStdString(text).replace(QLatin1Char('\n'), QLatin1String("\\n"));
        return QLatin1Char('\'') + oneLine + QLatin1Char('\'');
    };
    switch (value.type) {
    case Type::Group:
        return QStringLiteral("{}");
    case Type::Null:
        return QStringLiteral("null");
    case Type::Bool:
        return std::get<bool>(value.data) ? QStringLiteral("true") : QStringLiteral("false");
    case Type::Integer:
        return QString::number(std::get<std::int64_t>(value.data));
    case Type::Unsigned:
        return QString::number(std::get<std::uint64_t>(value.data)) + QLatin1Char('u');
    case Type::Double:
        return QString::fromStdString(FrameworkCore::Values::toText(value)) + QLatin1Char('d');
    case Type::StringList: {
        QStringList texts;
        for (const std::string& text : std::get<std::vector<std::string>>(value.data))
            texts += quoted(text);
        return QLatin1Char('[') + texts.join(QLatin1Char(',')) + QLatin1Char(']');
    }
    default:
        return quoted(std::get<std::string>(value.data));
    }
}

inline QString toLine(const Entry& entry)
{
    return QString::fromStdString(entry.path) + QStringLiteral(" = ") + toLine(entry.value);
}

inline QStringList toLines(const Document& document)
{
    QStringList lines;
    document.visit([&lines](const Entry& entry) { lines += toLine(entry); });
    return lines;
}

// The lines of a new document of the type with these bytes; its error when it does not take them.
inline QStringList toLines(const char* type, const std::string& bytes)
{
    const auto document = Repository::Documents::makeDocument(type);
    const auto outcome = document->parse(bytes);
    return outcome.ok() ? toLines(*document) : QStringList(QString::fromStdString(outcome.error));
}

} // namespace EntryLines
