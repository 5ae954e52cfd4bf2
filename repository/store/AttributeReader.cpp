#include "repository/store/AttributeReader.h"

#include "repository/common/PathRules.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/ListElement.h"
#include "repository/store/WriteCheck.h"

namespace Repository {

using namespace FrameworkCore::AppConfig;

namespace {

// What was known of an attribute at one moment.
class Snapshot : public Interfaces::AttributeInterface
{
public:
    // The attribute lock is held.
    Snapshot(const QString& nodePath, const Node& node)
        : path(nodePath), value(node.isReadable() ? node.value.toVariant() : QVariant()),
          dataType(QString::fromLatin1(node.value.getTypeName())), access(presentAccess(node))
    {
    }

    AccessMode getAccessMode() const override { return access; }
    QString getName() const override { return nameOf(path); }
    QString getPath() const override { return path; }
    QString getDataType() const override { return dataType; }
    QVariant getValue() const override { return value; }

private:
    QString path;
    QVariant value;
    QString dataType;
    AccessMode access;
};

} // namespace

int AttributeReader::readAttributeValue(const QString& path, QVariant& value, const int&)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    const Node* node = shard.find(key);
    value = QVariant();
    if (!node || !node->isAttribute()) {
        lock.unlock();
        return readElement(path, value);
    }
    if (!node->isReadable())
        return StatusCode::NotReadable;
    value = node->value.toVariant();
    return StatusCode::Success;
}

int AttributeReader::readElement(const QString& path, QVariant& value) const
{
    const auto element = ListElement::at(path);
    if (!element)
        return isValidPath(path) ? StatusCode::NotFound : StatusCode::InvalidPath;
    const NodeIndex::Key key(element->list);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* const list = shard.find(key);
    const QVariant text = element->readFrom(list);
    if (!text.isValid())
        return StatusCode::NotFound;
    if (!list->isReadable())
        return StatusCode::NotReadable;
    value = text;
    return StatusCode::Success;
}

std::shared_ptr<Interfaces::AttributeInterface> AttributeReader::getAttribute(const QString& path)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* node = shard.find(key);
    if (!node || !node->isAttribute())
        return {};
    return std::make_shared<Snapshot>(path, *node);
}

} // namespace Repository
