#include "repository/documents/ini/IniDocument.h"

#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/SameValue.h"
#include "repository/documents/common/TextPosition.h"

#include <algorithm>
#include <limits>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

// What begins the first comment of a run of blank and comment lines; 0 without one.
char commentOf(std::string_view gap)
{
    const std::size_t comment = gap.find_first_of(";#");
    return comment == std::string_view::npos ? '\0' : gap[comment];
}

// Where a node stands in the file, if that is in one place only.
const IniPiece* onlyBeginOf(const IniItem& item)
{
    if (!item.section)
        return item.entry;
    return item.entry || !item.section->deeper.empty() ? nullptr : item.section->header;
}

// Stray NULs are part of a text; where two of them stand side by side, or around one character as in UTF-16,
// or where they are many, it is none. Edits write no NUL and put none beside another, so that what has been
// read once can be read again.
bool isBinary(std::string_view text)
{
    constexpr int mostOfText = 64;
    int count = 0;
    for (std::size_t at = text.find('\0'); at != std::string_view::npos;) {
        const std::size_t next = text.find('\0', at + 1);
        const bool isBesideNext = next - at == 1 || (next - at == 2 && !endsLine(text.substr(0, next)));
        if (isBesideNext || ++count > mostOfText)
            return true;
        at = next;
    }
    return false;
}

// Each section has a path in the tree that names all sections it lies in, so that a file made for it could
// take a thousand times its size.
std::size_t mostSectionBytes(std::size_t fileSize)
{
    constexpr std::size_t always = std::size_t(64) << 20;
    return always + 8 * fileSize;
}

} // namespace

Outcome IniDocument::parse(std::string bytes)
{
    return reload(std::move(bytes), false);
}

Outcome IniDocument::reload(std::string bytes, bool isOwn)
{
    IniDocument fresh;
    Outcome outcome = fresh.load(std::move(bytes), isOwn);
    if (outcome.ok())
        *this = std::move(fresh);
    return outcome;
}

Outcome IniDocument::load(std::string bytes, bool isOwn)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return refused("an ini file of more than 4 GB is not read");
    Outcome decoded = encoding.decode(bytes, {});
    if (!decoded.ok())
        return decoded;
    fileText = std::make_unique<const std::string>(std::move(bytes));
    const std::string_view text = *fileText;
    const std::size_t firstEnd = text.find_first_of("\r\n");
    if (firstEnd != std::string_view::npos)
        style.lineEnd = text.substr(firstEnd, text.substr(firstEnd, 2) == "\r\n" ? 2 : 1);

    const auto failure = [this](const char* at, std::string reason) {
        const TextPosition position = positionOf(*fileText, std::size_t(at - fileText->data()));
        return Outcome{std::move(reason), position.line, position.column};
    };
    if (!isOwn && isBinary(text))
        return failure(text.data() + text.find('\0'),
                       "there are NUL characters: it is a binary file, or UTF-16 without its mark");
    style.comments = findIniComments(text);
    IniScanner scanner(text, style.comments);
    IniItem* section = &index.root();
    while (const std::optional<IniLine> line = scanner.next()) {
        if (line->kind == IniLine::Kind::Header && isIniTooDeep(line->key()))
            return failure(line->key().data(), "sections lie in each other more than " +
                                                   std::to_string(deepestIniSection) + " deep");
        IniPiece& piece = add(nullptr, chainEnd, *line);
        if (line->kind == IniLine::Kind::Gap && style.comment == '\0')
            style.comment = commentOf(line->text);
        if (line->kind == IniLine::Kind::Header) {
            const std::string path = encodePath(line->key());
            const bool isPlain = path == line->key();
            section = &index.nextSection({isPlain ? line->key() : std::string_view(path), isPlain});
            if (index.getSectionBytes() > mostSectionBytes(text.size()))
                return failure(line->key().data(),
                               "the sections up to here, lying deep in each other, take too much memory");
            piece.item = section;
            section->section->header = section->section->last = &piece;
            firstHeader = !firstHeader && line->indent == 0 ? &piece : firstHeader;
        } else if (line->kind == IniLine::Kind::Entry) {
            piece.item = &(isPlainKey(line->key()) ? index.nextEntry(*section, {line->key(), true})
                                                   : index.nextEntry(*section, {encodeKey(line->key())}));
            piece.item->entry = section->section->last = &piece;
            learnStyle(*line);
        }
    }
    if (!scanner.getError().empty())
        return failure(text.data() + scanner.getErrorOffset(), scanner.getError());
    return {};
}

void IniDocument::learnStyle(const IniLine& entry)
{
    style.bareKeys = style.bareKeys || !entry.separated;
    if (!entry.separated)
        return;
    if (!styleKnown && !entry.value().empty()) {
        styleKnown = true;
        style.separator = plainSeparator(entry.separator());
        style.indent = entry.blanksBefore();
    }
    if (style.quote == '\0')
        style.quote = quoteOf(entry);
    if (entry.continued && style.continuation.empty()) {
        const TextLine first = textLineAt(entry.lines(), 0);
        const std::string_view second = textLineAt(entry.lines(), first.end).content;
        const std::size_t indent = second.find_first_not_of(" \t\v\f");
        if (!endsInBackslash(first.content) && indent != std::string_view::npos && !isIniComment(second))
            style.continuation = second.substr(0, indent);
    }
}

IniPiece& IniDocument::add(IniPiece* before, IniPiece* above, const IniLine& line)
{
    IniPiece& piece = pieces.insert(before);
    piece.line = line;
    if (line.kind == IniLine::Kind::Gap)
        return piece;
    piece.above = above;
    piece.below = chainedBehind(above);
    (above ? above->below : chainFront) = &piece;
    (piece.below ? piece.below->above : chainEnd) = &piece;
    return piece;
}

IniPiece& IniDocument::addOwn(IniPiece* before, IniPiece* above, std::string text)
{
    reshaped = true;
    auto own = std::make_unique<IniOwnText>(IniOwnText{std::move(text), {}});
    IniLine line;
    line.text = own->text;
    IniPiece& piece = add(before, above, scanSingle(line.text, style.comments).value_or(line));
    piece.own = std::move(own);
    return piece;
}

void IniDocument::take(IniPiece& piece)
{
    if (piece.item) {
        (piece.above ? piece.above->below : chainFront) = piece.below;
        (piece.below ? piece.below->above : chainEnd) = piece.above;
    }
    reshaped = true;
    pieces.erase(piece);
}

IniPiece* IniDocument::chainedBehind(const IniPiece* above) const
{
    return above ? above->below : chainFront;
}

IniGap IniDocument::gapBelow(const IniPiece& piece) const
{
    IniGap gap;
    for (const IniPiece* at = piece.next; piece.below && at != piece.below; at = at->next)
        gap = gap | describeGap(at->line.text);
    return gap;
}

void IniDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    ++visits;
    index.root().visit = visits; // it is no entry
    Entry entry;
    const IniItem* group = &index.root(); // whose path begins that of the entry
    std::size_t groupSize = 0;
    std::vector<const IniItem*> unseen;
    for (const IniPiece* piece = pieces.front(); piece; piece = piece->next) {
        for (const IniItem* item = piece->item; item && item->visit != visits; item = item->parent) {
            item->visit = visits;
            unseen.push_back(item);
        }
        for (; !unseen.empty(); unseen.pop_back()) {
            const IniItem& item = *unseen.back();
            if (item.parent != group) {
                group = item.parent;
                entry.path = IniIndex::pathOf(*group);
                groupSize = entry.path.size();
            }
            entry.path.resize(groupSize);
            if (groupSize > 0)
                entry.path += '.';
            entry.path += item.name;
            entry.value = item.entry ? readIniValue(item.entry->line) : Value();
            visitor(entry);
        }
    }
}

SiblingPlace IniDocument::placeOf(std::string_view path) const
{
    using Kind = SiblingPlace::Kind;
    const IniItem* const item = index.find(path);
    if (!item || !item->parent)
        return {Kind::Last, {}};
    const IniPiece* const begin = onlyBeginOf(*item);
    if (!begin)
        return {};
    if (chainEnd == (item->section ? item->section->last : begin))
        return {Kind::Last, {}};
    const IniPiece* const above = begin->above;
    if (!above)
        return {Kind::First, {}};
    const IniItem& group = *item->parent;
    if (above == group.section->header) {
        const bool isFirst = group.section->deeper.size() == (item->section ? 1 : 0);
        return {isFirst ? Kind::First : Kind::Unknown, {}};
    }
    const IniItem* sibling = above->item;
    while (sibling && sibling->parent != &group)
        sibling = sibling->parent;
    if (!sibling || !onlyBeginOf(*sibling))
        return {};
    return {Kind::After, IniIndex::pathOf(*sibling)};
}

bool IniDocument::contains(std::string_view path) const
{
    return index.find(path) != nullptr;
}

std::string IniDocument::getBytes() const
{
    std::string text;
    text.reserve(fileText->size() + fileText->size() / 16);
    const auto append = [&text, this](std::string_view next) {
        // The last line of the file may lack its end until another comes behind it.
        if (!next.empty() && !endsLine(text))
            text += style.lineEnd;
        text += next;
    };
    if (reshaped) {
        for (const IniPiece* piece = pieces.front(); piece; piece = piece->next)
            append(piece->line.text);
        return encoding.encode(std::move(text));
    }
    const std::string_view file = *fileText;
    std::size_t copied = 0;
    for (const auto& [at, piece] : edited) {
        append(file.substr(copied, at - copied));
        append(piece->line.text);
        copied = at + piece->original().size();
    }
    append(file.substr(copied));
    return encoding.encode(std::move(text));
}

std::optional<Span> IniDocument::locate(std::string_view path) const
{
    const IniItem* const item = index.find(path);
    if (!item || !item->entry)
        return {};
    const IniLine& line = item->entry->line;
    Span span{encoding.markSize() + encoding.sizeOf(line.text.substr(0, line.valueBegin)),
              encoding.sizeOf(line.value())};
    bool endsInLine = true;
    for (const IniPiece* piece = pieces.front(); piece; piece = piece->next) {
        span.offset += endsInLine ? 0 : encoding.sizeOf(style.lineEnd);
        if (piece == item->entry)
            break;
        span.offset += encoding.sizeOf(piece->line.text);
        endsInLine = endsLine(piece->line.text);
    }
    return span;
}

std::optional<std::string> IniDocument::spell(std::string_view path) const
{
    const IniItem* const item = index.find(path);
    if (!item || !item->entry)
        return {};
    return std::string(item->entry->line.lines());
}

Outcome IniDocument::set(std::string_view path, const Value& value)
{
    const IniItem* const item = index.find(path);
    if (!item || !item->entry)
        return refused(item ? "it is a section and has no value" : "there is no such entry");
    IniPiece& piece = *item->entry;
    if (isSame(readIniValue(piece.line), value))
        return {};
    const std::string_view inFile = piece.original();
    const IniLine original =
        inFile.empty() ? piece.line : scanSingle(inFile, style.comments).value_or(piece.line);
    if (!inFile.empty() && isSame(readIniValue(original), value))
        return replace(piece, inFile);
    const std::optional<std::string> text = writeIniValue(original, value, style);
    return text ? replace(piece, *text) : refused(explainIniRefusal(value, style));
}

Outcome IniDocument::respell(std::string_view path, std::string_view spelling)
{
    const IniItem* const item = index.find(path);
    if (!item || !item->entry)
        return refused(item ? "it is a section and has no value" : "there is no such entry");
    const IniLine& now = item->entry->line;
    const std::optional<IniLine> line = scanSingle(spelling, style.comments);
    if (!line || line->kind != IniLine::Kind::Entry || line->mark != Type::Group || line->key() != now.key())
        return refused(quoted(spelling) + " is no line of this entry");
    return replace(*item->entry, std::string(now.marks()).append(spelling));
}

Outcome IniDocument::replace(IniPiece& piece, std::string_view text)
{
    const std::string_view original = piece.original();
    const bool asBefore = text == original;
    std::string unheld = asBefore ? std::string() : encoding.findRefusal(text);
    if (!unheld.empty())
        return refused(std::move(unheld));
    auto own = asBefore ? nullptr : std::make_unique<IniOwnText>(IniOwnText{std::string(text), original});
    const IniLine line =
        scanSingle(own ? std::string_view(own->text) : original, style.comments).value_or(piece.line);
    const bool turned = line.separated != piece.line.separated;
    if (turned && piece.above && wouldSwallow(piece.above->line, line, gapBelow(*piece.above)))
        return refused("without a separator the line would belong to the one above it");
    if (piece.below && wouldSwallow(line, piece.below->line, gapBelow(piece)))
        return refused("the line below it would be read as part of the value");
    piece.own = std::move(own);
    piece.line = line;
    if (!reshaped) {
        const auto at = static_cast<std::size_t>(original.data() - fileText->data());
        if (asBefore)
            edited.erase(at);
        else
            edited[at] = &piece;
    }
    return {};
}

} // namespace Repository::Documents
