#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Fuzz {

// Takes a document through what a hostile file and a person's edits may do to it, and checks what every
// document promises: bytes that were not edited stay, the tree is what reading the text again would give, a
// refused edit changes nothing, an edit can be taken back, and an empty document takes all of its entries as
// they are, or refuses one.
class DocumentExercise
{
public:
    // The text of the file is all up to the last NUL byte, and the edits are made from the bytes behind it;
    // without a NUL the input is both, so that a seed is a plain file.
    DocumentExercise(std::string_view format, std::string_view input);

    // What is broken, for the one who mends it; empty when nothing is.
    std::string run();

private:
    using Entry = Repository::Documents::Entry;
    using Value = FrameworkCore::Values::Value;

    std::string checkEdit();
    std::string checkSet(const Entry& entry, const Value& value);
    std::string checkUndo(const Entry& entry, const std::string& spelling);
    std::string checkInsertion(const std::string& path, const Value& value);
    std::string checkRemoval(const std::string& path);

    // What holds after every edit that was taken, and after every one that was refused.
    std::string checkTree() const;
    std::string checkNothingChanged() const;
    std::string checkCopy() const;
    std::string fault(const std::string& what) const;

    std::vector<Entry> entriesOf(const Repository::Documents::Document& document) const;
    unsigned choose(std::size_t count);
    std::string takeText();
    Value takeValue();
    const Entry* takeEntry();
    std::string takePath();

    std::string_view format;
    std::string_view text;
    std::string_view choices;
    std::unique_ptr<Repository::Documents::Document> document;
    std::string before;         // the bytes before the present edit
    std::vector<Entry> entries; // and the entries
    std::string action;         // the present edit, in words
};

} // namespace Fuzz
