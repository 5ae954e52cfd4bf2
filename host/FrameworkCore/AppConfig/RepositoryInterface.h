#pragma once

#include "host/FrameworkCore/AppConfig/AttributeReaderInterface.h"
#include "host/FrameworkCore/AppConfig/AttributeWriterInterface.h"
#include "host/FrameworkCore/AppConfig/BackendInterface.h"
#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "host/FrameworkCore/AppConfig/HistoryInterface.h"
#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/FrameworkCore/AppConfig/SearchInterface.h"
#include "host/FrameworkCore/AppConfig/TextInterface.h"
#include "host/FrameworkCore/AppConfig/TransferInterface.h"
#include "host/FrameworkCore/AppConfig/TreeInterface.h"
#include "host/FrameworkCore/AppConfig/ValidationInterface.h"

#include <QStringList>

#include <memory>

namespace FrameworkCore::AppConfig::Interfaces {

// The attribute repository: a tree of typed attributes, parts of which are kept in files. Any thread.
// Sub-interfaces share the repository's life; they may be kept, and outlive the pointer they were taken from.
// The order of the first seven operations is part of the contract with plug-ins; new ones are appended, and
// give an empty pointer where a repository does not offer them.
class VANTRY_CORE_EXPORT RepositoryInterface
{
public:
    virtual ~RepositoryInterface() = default;

    // Names that createBackend accepts as a type, in the order in which they are offered to people.
    virtual QStringList getBackendTypes() = 0;

    // Joins components, root first, with the path separator. A component may itself be a path.
    virtual QString buildAttributePath(const QStringList& components) const = 0;

    virtual std::shared_ptr<BackendInterface> getBackendInterface() = 0;
    virtual std::shared_ptr<AttributeReaderInterface> getReaderInterface() = 0;
    virtual std::shared_ptr<AttributeWriterInterface> getWriterInterface() = 0;
    virtual std::shared_ptr<NotificationInterface> getNotificationInterface() = 0;
    virtual std::shared_ptr<ValidationInterface> getValidationInterface() = 0;

    virtual std::shared_ptr<TreeInterface> getTreeInterface() { return {}; }
    virtual std::shared_ptr<ChangesInterface> getChangesInterface() { return {}; }
    virtual std::shared_ptr<HistoryInterface> getHistoryInterface() { return {}; }
    virtual std::shared_ptr<TransferInterface> getTransferInterface() { return {}; }
    virtual std::shared_ptr<SearchInterface> getSearchInterface() { return {}; }
    virtual std::shared_ptr<TextInterface> getTextInterface() { return {}; }
};

} // namespace FrameworkCore::AppConfig::Interfaces
