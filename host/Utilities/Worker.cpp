#include "host/Utilities/Worker.h"

#include <QCoreApplication>

#include <exception>
#include <new>
#include <system_error>

namespace Utilities {

namespace {

// What is translated here; a free tr() would be listed under another name than it is looked up by.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::Worker)
};

} // namespace

QString currentFailure()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return Texts::tr("there is not enough memory");
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::resource_unavailable_try_again)
            return Texts::tr("the system starts no further thread; close other programs, and try again");
        return QString::fromLocal8Bit(error.what());
    } catch (const std::exception& error) {
        return QString::fromLocal8Bit(error.what());
    } catch (...) {
        return Texts::tr("it failed for an unknown reason");
    }
}

} // namespace Utilities
