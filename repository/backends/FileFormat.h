#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>

namespace Repository {

// Which of the document types a file is of, its dialect included. Some endings say it for certain, so that a
// broken file is reported as what it should be; others only make it likely, and how the file begins decides.
// Any thread.
class FileFormat
{
public:
    // By its name alone, for a file that is yet to come; empty when the name tells nothing.
    static QString ofName(const QString& file);

    // By its name and how its bytes begin; empty for what is of no type that is known.
    static QString ofContent(const QString& file, std::string_view bytes);

    // The same of what is on the disk, and a type to fail with for what cannot be read. Opens regular files
    // only.
    static QString ofFile(const QString& file);

    // The same for files that nobody has chosen: empty for a binary file, whatever its name says, and for one
    // of which only the ending makes a format likely that it is not.
    static QString ofUnchosenFile(const QString& file);
    static QString ofUnchosenContent(const QString& file, std::string_view bytes);

    // Why ofFile is empty, for a person.
    static QString explainUnknown(const QString& file);

    // The type with the dialect of a file that holds this text, where the type is a format alone.
    static QString withDialect(const QString& type, const QString& file, std::string_view text);

    // Whether the name and a text of a file tell that it is of this type.
    static bool tells(const QString& file, const QString& type, const std::string& text);

    // Why a file of that type would be taken for another once it holds the text, so that it could not be read
    // again; empty when it would not be.
    static QString explainMistaking(const QString& file, const QString& type, const std::string& text);

    // How much of a file decides it, in bytes.
    static constexpr int enough = 16384;

private:
    static QByteArray beginningOf(const QString& file);
};

} // namespace Repository
