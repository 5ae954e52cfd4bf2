#pragma once

#include "host/FrameworkCore/AppConfig/AttributeWriterInterface.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/ListElement.h"
#include "repository/store/WriteCheck.h"

#include <memory>
#include <optional>

namespace Repository {

// Gives attributes their values. Any thread; every operation may be called from inside a callback.
class AttributeWriter : public FrameworkCore::AppConfig::Interfaces::AttributeWriterInterface
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    explicit AttributeWriter(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes)) {}

    bool createAttribute(const QString& path, const QVariant& value, const int& option,
                         const int& access) override;
    int writeAttributeValue(const QString& path, const QVariant& value, const int& points) override;
    Outcome create(const QString& path, const QVariant& value, int option, int access) override;
    Outcome write(const QString& path, const QVariant& value, int points) override;
    Outcome retype(const QString& path, const QVariant& value) override;

    // Has the file of an attribute take the value and its type, as one of several changes, if all that show
    // the same may have it. Gives what the attribute has to be then.
    using Acceptance = Outcome (*)(const Node& node, const QVariant& value, QVariant& accepted);
    static Outcome writeInFile(Transaction& transaction, const Node& node, const QVariant& value,
                               QVariant& accepted, Acceptance acceptance = acceptRetyped);

private:
    // The option of create that writes to an attribute which exists already; any other refuses it.
    static constexpr int createOrWrite = 3;

    // The one that makes room for an element of an array.
    static constexpr int createBefore = 4;

    Outcome createOne(const QString& path, const QVariant& value, int option, int access);
    Outcome writeOne(const QString& path, const QVariant& value, int points);
    // In a transaction: with another type, or where other attributes show the same.
    Outcome changeOne(const QString& path, const QVariant& value, Acceptance acceptance, int points);
    Outcome refuseUnknown(const QString& path, const QVariant& value);
    static Outcome checkCreation(const QString& path, bool isTypeKnown, int access);

    // The new attribute with its entry, in memory or in the backend that its place belongs to.
    static Outcome insert(Transaction& transaction, const QString& path, QVariant value, AccessMode access);

    // Whether an attribute takes a value; what is none takes any.
    static Outcome accept(const NodeWriter& nodes, const QString& path, const QVariant& value,
                          QVariant& accepted, Acceptance acceptance);

    // Gives an attribute the value and its type.
    static Outcome change(Transaction& transaction, Node& node, const QVariant& value, Acceptance acceptance);

    // The same as insert for an element of a list or of an array in a file; nothing where there is none.
    static std::optional<Outcome> insertElement(Transaction& transaction, const QString& path,
                                                const QVariant& value, bool movesOthers);

    // Of an element of a list.
    Outcome writeElement(const ListElement& element, const QString& path, const QVariant& value);

    // Nothing while the node's backend is being edited otherwise, and where it is linked.
    static std::optional<Outcome> replace(Node& node, const QString& path, const QVariant& value,
                                          QVariant& accepted, bool& isChanged);

    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
