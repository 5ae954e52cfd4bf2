#pragma once

#include <QString>
#include <QtTest>

namespace TestSupport {

// What a row gives to a column; a text may be a literal of UTF-8.
template <typename Type>
struct Cell
{
    using Given = Type;
};

struct GivenText : QString
{
    GivenText(const QString& text) : QString(text) {}
    GivenText(const char* utf8) : QString(QString::fromUtf8(utf8)) {}
};

template <>
struct Cell<QString>
{
    using Given = GivenText;
};

// Makes the columns of a table of tests, and gives what adds a row:
//     const auto row = TestSupport::columns<QString, int>("text", "length");
//     row("empty", "", 0);
template <typename... Types, typename... Names>
auto columns(const Names&... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "each column has a type and a name");
    (QTest::addColumn<Types>(names), ...);
    return [](const char* tag, const typename Cell<Types>::Given&... cells) {
        (QTest::newRow(tag) << ... << static_cast<const Types&>(cells));
    };
}

} // namespace TestSupport
