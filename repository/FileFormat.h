#pragma once

#include <QString>

namespace Repository {

// Which of the document types a file is of. Some endings say it for certain, so that a broken file is told as
// what it should be; others only make it likely, and how the file begins decides. Any thread.
class FileFormat
{
public:
    // By its name alone, for a file that is yet to come; empty when the name tells nothing.
    static QString ofName(const QString& file);

    // By its name and how it begins; empty for what is no text. Opens regular files only.
    static QString ofFile(const QString& file);
};

} // namespace Repository
