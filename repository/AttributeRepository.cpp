#include "repository/AttributeRepository.h"

#include "repository/common/Border.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/mounting/BackendRegistry.h"
#include "repository/mounting/Mounts.h"
#include "repository/operations/AttributeWriter.h"
#include "repository/operations/BackendChanges.h"
#include "repository/operations/BackendTexts.h"
#include "repository/operations/StepReplay.h"
#include "repository/search/AttributeSearch.h"
#include "repository/store/AttachedValidations.h"
#include "repository/store/AttributeReader.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/ListElement.h"
#include "repository/store/Refusals.h"
#include "repository/store/Subscriptions.h"
#include "repository/store/TreeReader.h"
#include "repository/transaction/ListEdit.h"
#include "repository/transaction/SubtreeRemoval.h"
#include "repository/transfer/SubtreeTransfer.h"

namespace Repository {

using namespace FrameworkCore::AppConfig;

namespace {

// A look at the tree, which gives nothing, and logs that, when memory is refused.
template <typename Operation>
auto looked(const QString& path, const Operation& operation)
{
    return guardMemory(operation, [&](const QString& reason) {
        logFailure(QStringLiteral("'%1': %2").arg(Outcome::shownPath(path), reason));
        return decltype(operation())();
    });
}

// The faces that the store shows to the contract; each keeps the store alive.

class Tree : public Interfaces::TreeInterface
{
public:
    explicit Tree(std::shared_ptr<AttributeStore> attributes)
        : store(std::move(attributes)), reader(*store->getTree())
    {
    }

    QStringList getChildNames(const QString& path) const override
    {
        return looked(path, [&] { return reader.getChildNames(path); });
    }
    int getChildCount(const QString& path) const override { return reader.getChildCount(path); }
    QStringList getLastChildNames(const QString& path, int count) const override
    {
        return looked(path, [&] { return reader.getLastChildNames(path, count); });
    }
    QVector<Interfaces::ChildInformation> getChildren(const QString& path) const override
    {
        return looked(path, [&] { return reader.getChildren(path, {}); });
    }

    QVector<Interfaces::ChildInformation> getChildrenBeginningWith(const QString& path,
                                                                   const QString& beginning) const override
    {
        return looked(path, [&] { return reader.getChildren(path, beginning); });
    }
    Interfaces::NodeInformation getNodeInformation(const QString& path) const override
    {
        return reader.getNodeInformation(path);
    }
    QStringList findPaths(const Interfaces::PathSearch& search) const override
    {
        return looked(search.pattern, [&] { return reader.findPaths(search); });
    }
    Outcome removeTree(const QString& path) override
    {
        return runForCaller(Outcome::Operation::Change, path, [&] {
            if (isAtOrBelow(path, ownRoot))
                return Refusals::ownTree();
            const auto name = [&] {
                return Texts::tr("Remove %1").arg(readablePath(*store->getTree(), path));
            };
            return store->change(name, [&path](Transaction& transaction) {
                Node* const node = transaction.getNodes().find(path);
                const auto element = node ? std::nullopt : ListElement::at(path);
                Node* const list = element ? transaction.getNodes().find(element->list) : nullptr;
                if (ListEdit::textsIn(transaction.getNodes(), list))
                    return ListEdit(transaction, *list).remove(element->index);
                return node ? SubtreeRemoval(transaction, *node).run() : Refusals::notFound();
            });
        });
    }

private:
    std::shared_ptr<AttributeStore> store;
    const TreeReader reader;
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
        return logged(
            guardMemory([&] { return StepReplay(*store->getTree(), store->getHistory(), direction).run(); }));
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
    Mounts mounts(*store->getTree(), store->getHistory());
    mounts.publish(QStringLiteral("internal.repository.path_separator"), QString(pathSeparator));
    mounts.publish(QStringLiteral("internal.backends.names"), {});
    return std::shared_ptr<AttributeRepository>(new AttributeRepository(store, options));
}

AttributeRepository::AttributeRepository(const std::shared_ptr<AttributeStore>& store,
                                         const RepositoryOptions& options)
    : backends(std::make_shared<BackendRegistry>(store, options.watchesFiles, options.observer)),
      reader(std::make_shared<AttributeReader>(store->getTree())),
      writer(std::make_shared<AttributeWriter>(store)),
      notifications(std::make_shared<Subscriptions>(store->getTree())),
      validations(std::make_shared<AttachedValidations>(store->getTree())),
      tree(std::make_shared<Tree>(store)), transfer(std::make_shared<SubtreeTransfer>(store)),
      changes(std::make_shared<BackendChanges>(store)), history(std::make_shared<Steps>(store)),
      search(std::make_shared<AttributeSearch>(store)), texts(std::make_shared<BackendTexts>(store))
{
}

QStringList AttributeRepository::getBackendTypes()
{
    return backends->getTypes();
}

QString AttributeRepository::buildAttributePath(const QStringList& components) const
{
    return components.join(pathSeparator);
}

std::shared_ptr<Interfaces::BackendInterface> AttributeRepository::getBackendInterface()
{
    return backends;
}

} // namespace Repository
