#include "host/Utilities/Worker.h"

#include <QCoreApplication>

#include <exception>
#include <new>
#include <system_error>

namespace Utilities {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Utilities::Worker", text);
}

} // namespace

QString currentFailure()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return tr("there is not enough memory");
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::resource_unavailable_try_again)
            return tr("the system starts no further thread; close other programs, and try again");
        return QString::fromLocal8Bit(error.what());
    } catch (const std::exception& error) {
        return QString::fromLocal8Bit(error.what());
    } catch (...) {
        return tr("it failed for an unknown reason");
    }
}

} // namespace Utilities
