#include "app/ModuleFile.h"

#include "app/VantryLog.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <cerrno>
#include <dlfcn.h>
#endif

namespace Vantry {

#if defined(_WIN32)

ModuleFileName lookUpModuleFile()
{
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&lookUpModuleFile), &module))
        return {{}, GetLastError()};
    wchar_t name[260];
    const DWORD length = GetModuleFileNameW(module, name, 260);
    if (length == 0)
        return {{}, GetLastError()};
    return {QString::fromWCharArray(name, int(length)), 0};
}

#else

ModuleFileName lookUpModuleFile()
{
    Dl_info information = {};
    errno = 0;
    if (dladdr(reinterpret_cast<const void*>(&lookUpModuleFile), &information) == 0 || !information.dli_fname)
        return {{}, quint32(errno)};
    return {QString::fromLocal8Bit(information.dli_fname), 0};
}

#endif

QFileInfo moduleFile(const ModuleFileLookup& lookup)
{
    const ModuleFileName name = lookup();
    if (!name.path.isEmpty())
        return QFileInfo(name.path);
    logLine(Shared::Logging::LogMessageType::Failure)
        << "GetModuleFileName failed with error: " << qulonglong(name.error);
    return {};
}

} // namespace Vantry
