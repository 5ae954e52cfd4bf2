#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace CommandLine {

// Values as they are typed on the command line.
class TypedText
{
public:
    static QStringList typeNames();

    // The type of that name, as "--type" takes it. Nothing, and a message, for any other.
    static std::optional<FrameworkCore::Values::Type> typeNamed(const QString& name);
    static QString nameOf(const QVariant& value);

    // Whether a null is typed so, where one is expected.
    static bool isNull(const QString& text);

    // The value of that type. Nothing, with the reason, for a text that is none.
    static std::optional<QVariant> read(const QString& text, FrameworkCore::Values::Type type,
                                        QString& reason);

    // What the text would be in a file without types: true, false, integers, or else a text.
    static QVariant readPlain(const QString& text);

    // The value as a word of the shell that "set" reads as it, in quotes where it needs them.
    static QString asShellWord(const QVariant& value);

    // The value as json; bytes, dates and times as texts.
    static QString toJson(const QVariant& value);
};

} // namespace CommandLine
