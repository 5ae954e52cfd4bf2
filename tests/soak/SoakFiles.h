#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Soak {

// The files of a soak: so many, of all formats in turns, with some sections of some values each.
class SoakFiles
{
public:
    SoakFiles(const QString& folder, int count);

    const QStringList& getNames() const { return names; }

    // A content of the file that differs from other rounds' in a few values.
    static QByteArray content(const QString& name, unsigned round);

private:
    QStringList names;
};

} // namespace Soak
