#include "repository/documents/ini/IniPieces.h"

namespace Repository::Documents {

IniPiece& IniPieces::make()
{
    if (unused.empty())
        return storage.emplace_back();
    IniPiece& piece = *unused.back();
    unused.pop_back();
    return piece;
}

IniPiece& IniPieces::insert(IniPiece* before)
{
    IniPiece& piece = make();
    piece.next = before;
    piece.previous = before ? before->previous : last;
    (piece.previous ? piece.previous->next : first) = &piece;
    (before ? before->previous : last) = &piece;
    return piece;
}

void IniPieces::erase(IniPiece& piece)
{
    (piece.previous ? piece.previous->next : first) = piece.next;
    (piece.next ? piece.next->previous : last) = piece.previous;
    piece = IniPiece();
    unused.push_back(&piece);
}

} // namespace Repository::Documents
