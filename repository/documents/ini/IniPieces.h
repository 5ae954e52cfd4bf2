#pragma once

#include "repository/documents/ini/IniScanner.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

struct IniItem;

// The text of a piece that was added or edited.
struct IniOwnText
{
    std::string text;
    std::string_view original; // what the file holds in its place; empty for a piece that was added
};

// One piece of the file in its place: in the list of all pieces, and in the chain of those that are no gaps.
// No pointer owns anything but the text.
struct IniPiece
{
    IniLine line; // a view into the file's bytes, or into own
    std::unique_ptr<IniOwnText> own;
    IniPiece* previous = nullptr;
    IniPiece* next = nullptr;
    IniPiece* above = nullptr;
    IniPiece* below = nullptr;
    IniItem* item = nullptr; // none for a gap

    std::string_view original() const { return own ? own->original : line.text; }
};

// All pieces of a file in their order. They lie side by side as they come from the file, since a heap block
// for each would be half as large again; those that are taken out make room for others.
class IniPieces
{
public:
    bool isEmpty() const { return !first; }

    // Null when there is none.
    IniPiece* front() { return first; }
    const IniPiece* front() const { return first; }
    const IniPiece* back() const { return last; }

    // A new piece before another one; behind all of them for null.
    IniPiece& insert(IniPiece* before);
    void erase(IniPiece& piece);

private:
    IniPiece& make();

    std::deque<IniPiece> storage;
    std::vector<IniPiece*> unused;
    IniPiece* first = nullptr;
    IniPiece* last = nullptr;
};

} // namespace Repository::Documents
