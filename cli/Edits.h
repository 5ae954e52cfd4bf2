#pragma once

#include "cli/Session.h"
#include "host/FrameworkCore/Values/Value.h"

#include <QString>

#include <optional>

namespace CommandLine {

using WantedType = std::optional<FrameworkCore::Values::Type>;

// Edits that several commands make. Nothing is saved by them; a failure is reported and its exit code given.
class Edits
{
public:
    Edits(Session& editedSession, const Source& edited) : session(editedSession), source(edited) {}

    // False, and a message, when the option --type names none.
    static bool readType(const Invocation& invocation, WantedType& type);

    // The VALUE among the arguments FILE PATH VALUE, or with --stdin the text of standard input, without a
    // line break at its end.
    static ExitCode readText(const Invocation& invocation, QString& text);

    // A new attribute, of that type or else of the one that the text would have in a file without types.
    ExitCode create(const QString& path, const QString& text, WantedType type) const;

    // Gives an attribute that type; without one, that which the file names for it or else the text looks
    // like.
    ExitCode set(const QString& fullPath, const QString& text, WantedType wanted) const;

    ExitCode write(const QString& fullPath, const QVariant& value) const;

    // The value of an attribute; nothing, and a message, for a write-only one.
    std::optional<QVariant> read(const QString& fullPath) const;

    // Saves what was done to all that a pattern matches, and says to how many; as in "removed".
    ExitCode saveAll(int count, const QString& pattern, const QString& whatWasDone) const;

private:
    ExitCode refuse(const QString& fullPath, const QString& reason) const;
    void tellLostDigits(const QString& fullPath, const QString& text, const QVariant& value) const;

    Session& session;     // not owned
    const Source& source; // not owned
};

} // namespace CommandLine
