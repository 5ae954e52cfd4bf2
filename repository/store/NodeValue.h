#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <QVariant>

#include <utility>

namespace Repository {

class NodePages;

// The value of an attribute in one word, since there may be millions: short texts and nearly all numbers lie
// in the word itself, longer texts in a block of one byte for each character where that is enough, and all
// else in a QVariant of its own. One thread at a time.
class NodeValue
{
public:
    NodeValue() = default; // null

    // Of an attribute type, or invalid for null.
    explicit NodeValue(const QVariant& variant);

    // As Values::toVariant has it. A text may lie in the pages.
    explicit NodeValue(const FrameworkCore::Values::Value& value, NodePages* pages = nullptr);

    NodeValue(NodeValue&& other) noexcept : word(std::exchange(other.word, 0)) {}
    NodeValue& operator=(NodeValue&& other) noexcept;
    ~NodeValue();

    bool isNull() const { return word == 0; }
    int getType() const;                                                       // as QMetaType numbers it
    const char* getTypeName() const { return QMetaType::typeName(getType()); } // null for null
    QVariant toVariant() const;

    // See Values::isSameValue.
    bool isSame(const QVariant& variant) const;

    // The text, to be changed in its place; an empty one is made of what is none.
    QString& ensureText();

private:
    template <typename Character>
    bool takeCharacters(const Character* characters, std::size_t size, NodePages* pages);
    bool isText() const; // that is in no QVariant
    char* getBlock() const;
    template <typename Use>
    auto useText(const Use& use) const;
    QVariant* getVariant() const { return reinterpret_cast<QVariant*>(word); }

    quint64 word = 0; // the form in the lowest bits, which are zero in a pointer
};

} // namespace Repository
