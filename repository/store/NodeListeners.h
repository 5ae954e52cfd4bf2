#pragma once

#include "repository/notification/RegistrationList.h"
#include "repository/validation/Validation.h"

#include <QtGlobal>

#include <memory>
#include <new>

namespace Repository {

// Who listens to an attribute and what checks its values, in one word, since there may be millions: the
// registrations of its path, and for the few attributes that have more a block with those, too.
class NodeListeners
{
public:
    struct Block
    {
        RegistrationList exact;
        Validations validations;
        Registrations matching; // those whose pattern matches, as of the node's generation
    };

    NodeListeners() noexcept : list() {}
    ~NodeListeners()
    {
        if (isBlock())
            delete getBlock();
        else
            list.~RegistrationList();
    }
    Q_DISABLE_COPY(NodeListeners)

    RegistrationList& getExact() { return isBlock() ? getBlock()->exact : list; }
    const RegistrationList& getExact() const { return isBlock() ? getBlock()->exact : list; }

    Block* getBlock() const { return isBlock() ? reinterpret_cast<Block*>(word - blockBit) : nullptr; }
    Block& ensureBlock() // made if there is none
    {
        if (!isBlock()) {
            auto made = std::make_unique<Block>();
            made->exact = std::move(list);
            list.~RegistrationList();
            word = reinterpret_cast<quintptr>(made.release()) | blockBit;
        }
        return *getBlock();
    }

private:
    static constexpr quintptr blockBit = 1; // which is zero in a pointer

    bool isBlock() const { return (word & blockBit) != 0; }

    union {
        RegistrationList list;
        quintptr word;
    };
    static_assert(sizeof(RegistrationList) == sizeof(quintptr));
};

} // namespace Repository
