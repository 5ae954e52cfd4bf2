#include "repository/AttributeRepository.h"

#include "repository/AttributeStore.h"
#include "repository/BackendChanges.h"
#include "repository/BackendRegistry.h"
#include "repository/MemoryGuard.h"
#include "repository/PathRules.h"
#include "repository/Refusals.h"
#include "repository/RepositoryLog.h"
#include "repository/Rule.h"
#include "repository/StepReplay.h"
#include "repository/SubtreeTransfer.h"

namespace Repository {

using namespace FrameworkCore::AppConfig;

namespace {

// A look at the tree that gives nothing where there is no memory for it, which is logged.
template <typename Operation>
auto looked(const QString& path, const Operation& operation)
{
    return guardMemory(operation, [&](const QString& reason) {
        logFailure(QStringLiteral("'%1': %2").arg(Outcome::shownPath(path), reason));
        return decltype(operation())();
    });
}

// What a change of the tree came to, which is logged.
template <typename Operation>
Outcome changed(const QString& path, const Operation& operation)
{
    return logged(guardMemory(operation).of(Outcome::Operation::Change, path));
}

// The faces that the store shows to the contract; each keeps the store alive.

class Reader : public Interfaces::AttributeReaderInterface
{
public:
    explicit Reader(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    int readAttributeValue(const QString& path, QVariant& value, const int&) override
    {
        return store->read(path, value);
    }

    std::shared_ptr<Interfaces::AttributeInterface> getAttribute(const QString& path) override
    {
        return store->getAttribute(path);
    }

private:
    std::shared_ptr<AttributeStore> store;
};

class Writer : public Interfaces::AttributeWriterInterface
{
public:
    explicit Writer(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    bool createAttribute(const QString& path, const QVariant& value, const int& option,
                         const int& access) override
    {
        return create(path, value, option, access).ok();
    }

    int writeAttributeValue(const QString& path, const QVariant& value, const int& points) override
    {
        return write(path, value, points).getStatus();
    }

    Outcome create(const QString& path, const QVariant& value, int option, int access) override
    {
        return changed(path, [&] { return store->create(path, value, option, access); });
    }

    Outcome write(const QString& path, const QVariant& value, int points) override
    {
        return changed(path, [&] { return store->write(path, value, points); });
    }

private:
    std::shared_ptr<AttributeStore> store;
};

class Notifications : public Interfaces::NotificationInterface
{
public:
    explicit Notifications(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    std::shared_ptr<Interfaces::RegistrationInterface>
    registerUpdateCallback(const QString& pathOrPattern, const Interfaces::UpdateCallback& callback,
                           const int& points) override
    {
        return store->addRegistration(pathOrPattern, callback, points);
    }

private:
    std::shared_ptr<AttributeStore> store;
};

class Validations : public Interfaces::ValidationInterface
{
public:
    explicit Validations(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    QStringList getValidationNames() override { return ruleNames(); }

    int addValidation(const QString& path, const QString& validationName) override
    {
        return logged(store->addRule(path, validationName)).ok() ? 1 : 0;
    }

    QVector<Interfaces::ValidationDescription> getValidationDescriptions() override
    {
        return ruleDescriptions();
    }

    QStringList getValidationsOf(const QString& path) const override { return store->getRules(path); }

private:
    std::shared_ptr<AttributeStore> store;
};

class Tree : public Interfaces::TreeInterface
{
public:
    explicit Tree(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    QStringList getChildNames(const QString& path) const override
    {
        return looked(path, [&] { return store->getChildNames(path); });
    }
    int getChildCount(const QString& path) const override { return store->getChildCount(path); }
    QStringList getLastChildNames(const QString& path, int count) const override
    {
        return looked(path, [&] { return store->getLastChildNames(path, count); });
    }
    QVector<Interfaces::ChildInformation> getChildren(const QString& path) const override
    {
        return looked(path, [&] { return store->getChildren(path, {}); });
    }

    QVector<Interfaces::ChildInformation> getChildrenBeginningWith(const QString& path,
                                                                   const QString& beginning) const override
    {
        return looked(path, [&] { return store->getChildren(path, beginning); });
    }
    Interfaces::NodeInformation getNodeInformation(const QString& path) const override
    {
        return store->getNodeInformation(path);
    }
    QStringList findPaths(const Interfaces::PathSearch& search) const override
    {
        return looked(search.pattern, [&] { return store->findPaths(search); });
    }
    Outcome removeTree(const QString& path) override
    {
        return changed(path, [&] { return store->removeTree(path); });
    }

private:
    std::shared_ptr<AttributeStore> store;
};

class Steps : public Interfaces::HistoryInterface
{
public:
    explicit Steps(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    void recordThisThread() override { store->getHistory().recordThisThread(); }
    std::unique_ptr<Step> beginStep(const QString& name) override
    {
        return std::make_unique<OpenStep>(store, name);
    }
    Outcome undo() override { return replay(History::Direction::Undo); }
    Outcome redo() override { return replay(History::Direction::Redo); }
    QString getUndoName() const override { return store->getHistory().getName(History::Direction::Undo); }
    QString getRedoName() const override { return store->getHistory().getName(History::Direction::Redo); }

private:
    Outcome replay(History::Direction direction)
    {
        return logged(guardMemory([&] { return StepReplay(*store, direction).run(); }));
    }

    class OpenStep : public Step
    {
    public:
        OpenStep(std::shared_ptr<AttributeStore> attributes, const QString& name)
            : store(std::move(attributes)), scope(store->getHistory(), name)
        {
        }

    private:
        std::shared_ptr<AttributeStore> store;
        History::Scope scope;
    };

    std::shared_ptr<AttributeStore> store;
};

} // namespace

std::shared_ptr<AttributeRepository> AttributeRepository::create(const RepositoryOptions& options)
{
    auto store = std::make_shared<AttributeStore>(options.historyBound);
    store->publish(QStringLiteral("internal.repository.path_separator"), QString(pathSeparator));
    store->publish(QStringLiteral("internal.backends.names"), {});
    return std::shared_ptr<AttributeRepository>(new AttributeRepository(store, options));
}

AttributeRepository::AttributeRepository(const std::shared_ptr<AttributeStore>& store,
                                         const RepositoryOptions& options)
    : backends(std::make_shared<BackendRegistry>(store, options.watchesFiles, options.observer)),
      reader(std::make_shared<Reader>(store)), writer(std::make_shared<Writer>(store)),
      notifications(std::make_shared<Notifications>(store)),
      validations(std::make_shared<Validations>(store)), tree(std::make_shared<Tree>(store)),
      transfer(std::make_shared<SubtreeTransfer>(store)), changes(std::make_shared<BackendChanges>(store)),
      history(std::make_shared<Steps>(store))
{
}

AttributeRepository::~AttributeRepository() = default;

QStringList AttributeRepository::getBackendTypes()
{
    return BackendRegistry::getTypes();
}

QString AttributeRepository::buildAttributePath(const QStringList& components) const
{
    return components.join(pathSeparator);
}

std::shared_ptr<Interfaces::BackendInterface> AttributeRepository::getBackendInterface()
{
    return backends;
}

std::shared_ptr<Interfaces::AttributeReaderInterface> AttributeRepository::getReaderInterface()
{
    return reader;
}

std::shared_ptr<Interfaces::AttributeWriterInterface> AttributeRepository::getWriterInterface()
{
    return writer;
}

std::shared_ptr<Interfaces::NotificationInterface> AttributeRepository::getNotificationInterface()
{
    return notifications;
}

std::shared_ptr<Interfaces::ValidationInterface> AttributeRepository::getValidationInterface()
{
    return validations;
}

std::shared_ptr<Interfaces::TreeInterface> AttributeRepository::getTreeInterface()
{
    return tree;
}

std::shared_ptr<Interfaces::TransferInterface> AttributeRepository::getTransferInterface()
{
    return transfer;
}

std::shared_ptr<Interfaces::ChangesInterface> AttributeRepository::getChangesInterface()
{
    return changes;
}

std::shared_ptr<Interfaces::HistoryInterface> AttributeRepository::getHistoryInterface()
{
    return history;
}

} // namespace Repository
