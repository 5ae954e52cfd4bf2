#pragma once

#include <QStringList>

namespace Vantry {

// Keeps in mind where the log was when it was made, so that what the repository refuses from then on can be
// told to the person. Any thread.
class RefusalListener
{
public:
    RefusalListener();

    // What the repository has logged as failures since.
    QStringList getReasons() const;

private:
    const quint64 number;
};

} // namespace Vantry
