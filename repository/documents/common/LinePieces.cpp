#include "repository/documents/common/LinePieces.h"

namespace Repository::Documents {

std::uint32_t LinePieces::insert(std::uint32_t before, std::uint32_t above, const Statement& line)
{
    auto id = static_cast<std::uint32_t>(pieces.size());
    if (unused.empty()) {
        pieces.emplace_back();
    } else {
        id = unused.back();
        unused.pop_back();
    }
    LinePiece& piece = pieces[id];
    piece.line = line;
    piece.next = before;
    piece.previous = before == none ? last : pieces[before].previous;
    (piece.previous == none ? first : pieces[piece.previous].next) = id;
    (before == none ? last : pieces[before].previous) = id;
    if (line.kind == Statement::Kind::Trivia)
        return id;
    piece.above = above;
    piece.below = chainedBelow(above);
    (above == none ? chainFront : pieces[above].below) = id;
    (piece.below == none ? chainBack : pieces[piece.below].above) = id;
    return id;
}

void LinePieces::erase(std::uint32_t id)
{
    LinePiece& piece = pieces[id];
    (piece.previous == none ? first : pieces[piece.previous].next) = piece.next;
    (piece.next == none ? last : pieces[piece.next].previous) = piece.previous;
    if (piece.line.kind != Statement::Kind::Trivia) {
        (piece.above == none ? chainFront : pieces[piece.above].below) = piece.below;
        (piece.below == none ? chainBack : pieces[piece.below].above) = piece.above;
    }
    piece = LinePiece();
    unused.push_back(id);
}

} // namespace Repository::Documents
