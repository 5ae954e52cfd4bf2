#pragma once

#include <QCoreApplication>

namespace Repository {

// What the repository says to people, in the language that the program shows; in that of the sources before
// it shows one. Any thread.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Repository)
};

} // namespace Repository
