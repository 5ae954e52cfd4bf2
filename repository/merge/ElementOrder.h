#pragma once

#include "repository/merge/ListSide.h"

#include <array>
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace Repository {

enum class MergeSide { Base, Mine, Theirs, Merged };

// The elements that a list has after a merge, in their order. An element has one number on all sides: that
// of the base, where it is in it, or one beyond. What both sides have added alike at one place is one.
class ElementOrder
{
public:
    using Numbers = std::vector<std::size_t>;

    ElementOrder(const ElementNodes& base, const ElementNodes& mine, const ElementNodes& theirs,
                 const ListSide::CommentTest& myTest, const ListSide::CommentTest& theirTest);

    // What a side has, in its order. Merged is mine where the two cannot be brought together.
    const Numbers& getNumbers(MergeSide side) const { return numbers[std::size_t(side)]; }

    // Null where a side has no such element.
    const ElementNode* find(MergeSide side, std::size_t number) const;

    // As it comes into what lacks it.
    MergeSide getSource(std::size_t number) const;

    // Whether one side has taken out or put aside what the other has changed, or both have ordered the
    // elements anew.
    bool isInConflict() const { return conflict; }

    void giveUp(); // theirs

private:
    void numberAlike();
    void numberAlike(const ListSide::Hunk& hunk, const ListSide::Hunk& other);
    bool haveReplacedAlike(std::size_t origin) const;
    bool clashes(const ListSide& one, const ListSide& other, const ListSide::CommentTest& otherTest) const;
    bool weave();
    bool insert(const Numbers& from, std::size_t begin, std::size_t end, bool isMine);
    Numbers::iterator findReplaced(const ListSide& side, std::size_t element, Numbers::iterator begin,
                                   Numbers::iterator end) const;

    const ElementNodes& base;
    const ListSide mySide;
    const ListSide theirSide;
    std::array<Numbers, 4> numbers;
    std::unordered_map<std::size_t, std::size_t> newTheirs; // by number
    bool conflict = false;
};

} // namespace Repository
