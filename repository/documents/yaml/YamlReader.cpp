#include "repository/documents/yaml/YamlReader.h"

#include "repository/documents/yaml/YamlFaults.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>
#include <atomic>
#include <libfyaml.h>
#include <new>
#include <optional>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr std::size_t blockSize = 64;

// Whether a block is ASCII that YAML has everywhere. Without a branch, so that it becomes vector code.
bool isPlainBlock(const char* block)
{
    unsigned char others = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const auto byte = static_cast<unsigned char>(block[i]);
        const bool isPrintable = static_cast<unsigned char>(byte - 0x20) < 0x7F - 0x20;
        const bool isSpace = (byte == '\n') | (byte == '\r') | (byte == '\t');
        others |= static_cast<unsigned char>(!(isPrintable | isSpace));
    }
    return others == 0;
}

// The first byte that no text of YAML has; the library would take it for the end.
std::optional<std::size_t> findForeignByte(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        if (at + blockSize <= text.size() && isPlainBlock(text.data() + at)) {
            at += blockSize;
            continue;
        }
        const auto isPlain = [](unsigned char byte) { return byte >= 0x20 && byte < 0x7F; };
        while (at < text.size() && isPlain(static_cast<unsigned char>(text[at])))
            ++at;
        if (at == text.size())
            break;
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte == '\n') {
            ++at;
            continue;
        }
        const std::size_t length = utf8Length(text.substr(at));
        const bool isControl = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
        if (length == 0 || isControl || byte == 0x7F)
            return at;
        const char32_t code = length > 1 ? utf8CodePoint(text.substr(at, length)) : byte;
        if ((code >= 0x80 && code < 0xA0 && code != 0x85) || code == 0xFFFE || code == 0xFFFF)
            return at;
        at += length;
    }
    return {};
}

// Something that the library must see at a place of the text.
struct Gap
{
    std::size_t at;
    std::string filling;
};

// After the "-" of an element that has nothing.
std::optional<Gap> findEmptyElement(std::string_view text, std::size_t line)
{
    const std::size_t dash = skipYamlBlanks(text, line);
    const std::size_t rest = skipYamlBlanks(text, dash + 1);
    const bool isAlone =
        rest >= text.size() || isYamlBreak(text[rest]) || (text[rest] == '#' && rest > dash + 1);
    if (dash == text.size() || text[dash] != '-' || !isAlone)
        return {};
    const std::size_t next = skipYamlTrivia(text, dash + 1);
    if (next < text.size() && columnOfYaml(text, next) > dash - line)
        return {};
    return Gap{dash + 1, " ~"};
}

// After the tags and anchors that come next.
std::size_t skipProperties(std::string_view text, std::size_t at)
{
    while (at < text.size() && (text[at] == '!' || text[at] == '&'))
        at = skipYamlBlanks(text, std::min(text.find_first_of(" \t\r\n", at), text.size()));
    return at;
}

// The column of the key, or of the indicator, on a line above that has one; -1 without any.
std::ptrdiff_t columnAbove(std::string_view text, std::size_t line)
{
    while (line > 0) {
        line = findYamlLine(text, line - 1);
        std::size_t at = skipYamlBlanks(text, line);
        const std::size_t end = findYamlLineEnd(text, at);
        const std::size_t rest = skipProperties(text, at);
        if (rest == end || text[rest] == '#')
            continue;
        const std::size_t last = endOfYamlIndicators(text, at, end);
        if (last > at)
            at = skipYamlTail(text, last) == end ? last - 1 : skipYamlBlanks(text, last);
        return text.substr(line, 3) == "---" ? -1 : std::ptrdiff_t(at - line);
    }
    return -1;
}

// Before a block scalar that begins on a line of its own, further in than its text.
std::optional<Gap> findScalarOffItsText(std::string_view text, std::size_t line)
{
    const std::size_t at = skipProperties(text, skipYamlBlanks(text, line));
    if (at == text.size() || (text[at] != '|' && text[at] != '>'))
        return {};
    const std::size_t end = std::min(text.find_first_not_of("|>+-", at), text.size());
    if (skipYamlTail(text, end) != findYamlLineEnd(text, end))
        return {};
    const std::size_t next = skipYamlLine(text, end);
    const std::size_t first = std::min(text.find_first_not_of(" \r\n", next), text.size());
    const std::size_t column = columnOfYaml(text, first);
    if (column >= at - line || std::ptrdiff_t(column) <= columnAbove(text, line))
        return {};
    return Gap{at, '\n' + std::string(column, ' ')};
}

// Also in texts, which stay texts with a null or a line break more.
std::vector<Gap> findGaps(std::string_view text)
{
    std::vector<Gap> found;
    for (std::size_t line = 0; line < text.size(); line = skipYamlLine(text, line)) {
        auto gap = findEmptyElement(text, line);
        gap = gap ? gap : findScalarOffItsText(text, line);
        if (gap)
            found.push_back(std::move(*gap));
    }
    return found;
}

YamlRange rangeOf(fy_token* token, std::size_t before = 0, std::size_t after = 0)
{
    const fy_mark* const begin = token ? fy_token_start_mark(token) : nullptr;
    const fy_mark* const end = token ? fy_token_end_mark(token) : nullptr;
    return begin && end ? YamlRange{begin->input_pos - before, end->input_pos + after} : YamlRange();
}

YamlStyle styleOf(fy_token* token)
{
    switch (token ? fy_scalar_token_get_style(token) : FYSS_PLAIN) {
    case FYSS_SINGLE_QUOTED:
        return YamlStyle::Single;
    case FYSS_DOUBLE_QUOTED:
        return YamlStyle::Double;
    case FYSS_LITERAL:
        return YamlStyle::Literal;
    case FYSS_FOLDED:
        return YamlStyle::Folded;
    default:
        return YamlStyle::Plain;
    }
}

} // namespace

struct YamlReader::Parser
{
    explicit Parser(std::string_view text)
    {
        fy_diag_cfg diagnosis{};
        fy_diag_cfg_default(&diagnosis);
        diagnosis.fp = nullptr;
        diagnosis.show_type = false;
        diagnosis.output_fn = [](fy_diag*, void* self, const char* message, std::size_t length) {
            static_cast<Parser*>(self)->said.append(message, length);
        };
        diagnosis.user = this;
        errors = fy_diag_create(&diagnosis);
        if (!errors)
            throw std::bad_alloc();
        fy_diag_set_collect_errors(errors, true); // what draws them would read beyond the text
        // Real files close brackets in the column of their key, as all other readers let them.
        fy_parse_cfg configuration{};
        configuration.flags = static_cast<fy_parse_cfg_flags>(FYPCF_QUIET | FYPCF_DEFAULT_VERSION_AUTO |
                                                              FYPCF_SLOPPY_FLOW_INDENTATION);
        configuration.diag = errors;
        parser = fy_parser_create(&configuration);
        if (!parser || fy_parser_set_string(parser, text.data(), text.size()) != 0)
            throw std::bad_alloc();
    }

    ~Parser()
    {
        fy_parser_destroy(parser);
        fy_diag_unref(errors);
    }

    // Also warnings, which are never freed.
    bool hasFaults() const
    {
        void* previous = nullptr;
        return fy_parser_get_stream_error(parser) || fy_diag_errors_iterate(errors, &previous);
    }

    // After an error, parts of the parser would be freed twice: it is left alone, some 4 kB.
    static void leave(std::unique_ptr<Parser> failed)
    {
        static std::atomic<Parser*> last{nullptr}; // leads to all of them, which are not lost therefore
        Parser* const left = failed.release();
        left->before = last.exchange(left);
    }

    fy_diag* errors = nullptr;
    std::string said; // of a fault that has no place and is not collected
    fy_parser* parser = nullptr;
    Parser* before = nullptr; // another one that was left
};

YamlReader::YamlReader(std::string_view yaml, bool fillsGaps) : text(yaml)
{
    if (const auto foreign = findForeignByte(text)) {
        const auto byte = static_cast<unsigned char>(text[*foreign]);
        outcome = outcomeAt(text, *foreign,
                            byte == 0 ? Reason::tr("a NUL, which is in no text")
                            : utf8Length(text.substr(*foreign)) == 0
                                ? Reason::tr("this is not valid UTF-8")
                                : Reason::tr("a control character, which YAML forbids"));
    } else if (!text.empty()) {
        if (fillsGaps)
            fillGaps();
        parser = std::make_unique<Parser>(fills.empty() ? text : filled);
    }
}

bool YamlReader::hasGaps(std::string_view yaml)
{
    return !findGaps(yaml).empty();
}

void YamlReader::fillGaps()
{
    std::size_t at = 0;
    for (const Gap& gap : findGaps(text)) {
        filled += text.substr(at, gap.at - at);
        fills.push_back({filled.size(), gap.filling.size(), filled.size() - gap.at});
        filled += gap.filling;
        at = gap.at;
    }
    filled += text.substr(at);
}

YamlReader::~YamlReader()
{
    if (parser && parser->hasFaults())
        Parser::leave(std::move(parser));
}

bool YamlReader::fail()
{
    void* previous = nullptr;
    const fy_diag_error* const error = fy_diag_errors_iterate(parser->errors, &previous);
    std::size_t at = 0;
    if (error) {
        outcome.line = std::size_t(std::max(error->line, 1));
        outcome.column = std::size_t(std::max(error->column, 1));
        at = inText(placeInRead(outcome));
    } else {
        at = skipYamlTrivia(text, endOfYamlIndicators(text, lastEnd, text.size()));
    }
    std::string message = error ? error->msg : parser->said.substr(0, parser->said.find('\n'));
    if (message.empty())
        message = Reason::tr("the text is not YAML");
    const std::size_t line = findYamlLine(text, at);
    outcome =
        outcomeAt(text, at, explainYamlFault(message, text.substr(line, findYamlLineEnd(text, at) - line)));
    return false;
}

std::size_t YamlReader::placeInRead(const Outcome& fault) const
{
    const std::string_view read = fills.empty() ? text : std::string_view(filled);
    std::size_t at = 0;
    for (std::size_t line = 1; line < fault.line; ++line)
        at = skipYamlLine(read, at);
    const std::size_t end = findYamlLineEnd(read, at);
    for (std::size_t column = 1; column < fault.column && at < end; ++column)
        at += utf8Length(read.substr(at));
    return at;
}

std::size_t YamlReader::inText(std::size_t at) const
{
    const auto next =
        std::lower_bound(fills.begin(), fills.end(), at,
                         [](const Fill& fill, std::size_t place) { return fill.begin < place; });
    if (next == fills.begin())
        return at;
    const Fill& last = *std::prev(next);
    return at - last.before - std::min(last.length, at - last.begin);
}

// Without what was filled in; what is one of those is nowhere.
YamlRange YamlReader::inText(YamlRange range) const
{
    if (fills.empty() || !range.exists())
        return range;
    const YamlRange found{inText(range.begin), inText(range.end)};
    return found.begin == found.end && range.begin < range.end ? YamlRange() : found;
}

bool YamlReader::next(YamlEvent& event)
{
    if (!parser)
        return false;
    const auto release = [this](fy_event* read) { fy_parser_event_free(parser->parser, read); };
    while (true) {
        const std::unique_ptr<fy_event, decltype(release)> read(fy_parser_parse(parser->parser), release);
        if (!read)
            return fy_parser_get_stream_error(parser->parser) && fail();
        event = YamlEvent();
        const auto takeRange = [&](YamlEvent::Kind kind, YamlRange range) {
            event.kind = kind;
            event.token = inText(range);
            lastEnd = event.token.exists() ? event.token.end : lastEnd;
            return true;
        };
        const auto take = [&](YamlEvent::Kind kind, fy_token* token) {
            takeRange(kind, rangeOf(token));
            event.style = event.token.begin < event.token.end ? YamlStyle::Flow : YamlStyle::Block;
            return true;
        };
        const auto takeProperties = [&](fy_token* anchor, fy_token* tag) {
            event.anchor = inText(rangeOf(anchor, 1));
            event.tag = inText(rangeOf(tag));
        };
        switch (read->type) {
        case FYET_DOCUMENT_START:
            return take(YamlEvent::Kind::DocumentStart, read->document_start.document_start);
        case FYET_DOCUMENT_END:
            return take(YamlEvent::Kind::DocumentEnd, read->document_end.document_end);
        case FYET_MAPPING_START:
            takeProperties(read->mapping_start.anchor, read->mapping_start.tag);
            return take(YamlEvent::Kind::MapStart, read->mapping_start.mapping_start);
        case FYET_MAPPING_END:
            return take(YamlEvent::Kind::MapEnd, read->mapping_end.mapping_end);
        case FYET_SEQUENCE_START:
            takeProperties(read->sequence_start.anchor, read->sequence_start.tag);
            return take(YamlEvent::Kind::SequenceStart, read->sequence_start.sequence_start);
        case FYET_SEQUENCE_END:
            return take(YamlEvent::Kind::SequenceEnd, read->sequence_end.sequence_end);
        case FYET_SCALAR: {
            takeProperties(read->scalar.anchor, read->scalar.tag);
            event.style = styleOf(read->scalar.value);
            const bool isQuoted = event.style == YamlStyle::Single || event.style == YamlStyle::Double;
            return takeRange(YamlEvent::Kind::Scalar,
                             rangeOf(read->scalar.value, isQuoted ? 1 : 0, isQuoted ? 1 : 0));
        }
        case FYET_ALIAS:
            return takeRange(YamlEvent::Kind::Alias, rangeOf(read->alias.anchor, 1));
        default:
            break;
        }
    }
}

} // namespace Repository::Documents
