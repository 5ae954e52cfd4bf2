#include "repository/fleet/StoreModule.h"

#include "host/Shared/Logging/LogRecord.h"
#include "repository/common/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace Repository {

namespace {

// The folder of modules is beside the library that all programs share. It is found by a function that nobody
// takes the address of, since that may be a place in the program.
QString moduleFile()
{
    Dl_info information{};
    if (dladdr(reinterpret_cast<const void*>(&Shared::Logging::LogRecord::instance), &information) == 0 ||
        !information.dli_fname)
        return {};
    const QDir folder = QFileInfo(QFile::decodeName(information.dli_fname)).absoluteDir();
    return folder.filePath(QStringLiteral(VANTRY_MODULE_FOLDER "/libvantry-etcd.so"));
}

struct Entry
{
    OpenStoreTransport open = nullptr;
    QString error;
};

Entry load()
{
    const QString file = moduleFile();
    if (!QFileInfo::exists(file))
        return {nullptr, Texts::tr("the module for it is not installed (%1); it comes with the package "
                                   "vantry-etcd")
                             .arg(file)};
    void* const library = dlopen(QFile::encodeName(file).constData(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = library ? dlsym(library, openStoreTransportName) : nullptr;
    if (!symbol)
        return {nullptr, Texts::tr("its module cannot be loaded: %1").arg(QString::fromLocal8Bit(dlerror()))};
    return {reinterpret_cast<OpenStoreTransport>(symbol), {}};
}

} // namespace

std::unique_ptr<StoreTransport> StoreModule::open(const StoreSettings& settings, QString& error)
{
    static const Entry entry = load();
    error = entry.error;
    if (!entry.open)
        return nullptr;
    std::unique_ptr<StoreTransport> transport(entry.open(StoreTransport::version, settings));
    if (!transport)
        error = Texts::tr("its module is of another version of this program; install the two together");
    return transport;
}

} // namespace Repository
