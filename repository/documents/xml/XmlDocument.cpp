#include "repository/documents/xml/XmlDocument.h"

#include "repository/documents/common/CharacterSet.h"
#include "repository/documents/common/SpanEncoder.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/xml/XmlInsertion.h"
#include "repository/documents/xml/XmlReader.h"
#include "repository/documents/xml/XmlSubtrees.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlWriter.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Repository::Documents {

namespace {

// What the first line of a file says about its encoding.
struct XmlDeclaration
{
    std::string_view name; // as the file spells it
    std::string encoding;  // in small letters; UTF-8 where the file does not say
    bool isUtf8() const { return encoding == "utf-8" || encoding == "utf8"; }
    bool isAscii() const
    {
        return encoding == "us-ascii" || encoding == "ascii" || encoding == "ansi_x3.4-1968";
    }
};

XmlDeclaration readXmlDeclaration(std::string_view bytes)
{
    constexpr std::string_view blanks = " \t\r\n";
    constexpr std::string_view label = "encoding";
    constexpr auto npos = std::string_view::npos;
    const std::string_view line = startsWith(bytes, "<?xml") ? bytes.substr(0, bytes.find("?>")) : "";
    const std::size_t at = line.find(label);
    const std::size_t equals = at == npos ? at : line.find_first_not_of(blanks, at + label.size());
    if (equals == npos || line[equals] != '=')
        return {{}, "utf-8"};
    const std::size_t quote = line.find_first_not_of(blanks, equals + 1);
    if (quote == npos || (line[quote] != '"' && line[quote] != '\''))
        return {{}, "utf-8"};
    const std::string_view name = line.substr(quote + 1, line.find(line[quote], quote + 1) - quote - 1);
    return {name, lowered(name)};
}

} // namespace

Outcome XmlDocument::parse(std::string bytes)
{
    try {
        const XmlDeclaration declared = readXmlDeclaration(bytes);
        const bool isOther = !declared.isUtf8() && !declared.isAscii();
        if (isOther && !CharacterSet::isKnown(declared.encoding))
            return outcomeAt(
                bytes, std::size_t(declared.name.data() - bytes.data()),
                Reason::tr("the encoding %1 is not known; save the file as UTF-8", {quoted(declared.name)}));
        const bool isAscii = declared.isAscii();
        TextEncoding encoding;
        Outcome outcome =
            encoding.decode(bytes, {true, isOther ? std::string(declared.name) : std::string()});
        if (!outcome.ok())
            return outcome;
        auto fresh = std::make_unique<XmlFile>(std::move(bytes));
        fresh->spelling.encoding = encoding;
        fresh->spelling.isAscii = isAscii;
        fresh->spelling.lineEnd = lineEndOf(fresh->tree.getOriginal());
        outcome = XmlReader(fresh->tree, fresh->entities).read();
        if (!outcome.ok())
            return outcome;
        file = std::move(fresh);
    } catch (const std::bad_alloc&) {
        return refused(Reason::tr("there is not enough memory for a file of this size"));
    }
    return {};
}

void XmlDocument::walk(const std::function<void(std::string&, NodeId)>& walker) const
{
    const XmlTree& tree = file->tree;
    std::string path;
    std::vector<std::size_t> lengths; // of the paths of the elements above
    NodeId id = tree.getRoot();
    while (id != noNode) {
        const std::size_t length = path.size();
        file->appendComponent(path, id);
        walker(path, id);
        const XmlNode* node = &tree.node(id);
        if (node->first != noNode) {
            lengths.push_back(length);
            id = node->first;
            continue;
        }
        path.resize(length);
        while (node->next == noNode && !lengths.empty()) {
            path.resize(lengths.back());
            lengths.pop_back();
            node = &tree.node(node->parent);
        }
        id = node->next;
    }
}

void XmlDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    Entry entry;
    walk([&](std::string& path, NodeId id) {
        entry.path.swap(path);
        entry.value = file->values.read(id);
        visitor(entry);
        entry.path.swap(path);
    });
}

// What says how blanks are read.
bool XmlDocument::mayChangeReading(std::string_view path) const
{
    const std::string_view last = splitLast(path).last;
    return startsWith(last, "@") && last.substr(1) == xmlSpace;
}

Outcome XmlDocument::editReading(const std::function<Outcome()>& edit)
{
    std::string before = getBytes();
    Outcome outcome = edit();
    if (!outcome.ok())
        return outcome;
    XmlDocument fresh;
    const auto entriesOf = [](const XmlDocument& document) {
        std::vector<std::pair<std::string, Value>> entries;
        document.visit([&](const Entry& entry) { entries.emplace_back(entry.path, entry.value); });
        return entries;
    };
    const auto isAlike = [](const auto& a, const auto& b) {
        return a.first == b.first && isSame(a.second, b.second);
    };
    const auto wanted = entriesOf(*this);
    if (fresh.parse(getBytes()).ok()) {
        const auto found = entriesOf(fresh);
        if (std::equal(found.begin(), found.end(), wanted.begin(), wanted.end(), isAlike)) {
            file = std::move(fresh.file);
            return outcome;
        }
    }
    parseAgain(std::move(before));
    return refused(Reason::tr("with it, other values of the file would be read with other blanks"));
}

Outcome XmlDocument::set(std::string_view path, const Value& value)
{
    return mayChangeReading(path) ? editReading([&] { return setValue(path, value); })
                                  : setValue(path, value);
}

Outcome XmlDocument::setValue(std::string_view path, const Value& value)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    if (value.type == Type::Group)
        return refused(Reason::tr("%1 has a value and cannot become a group", {quoted(path)}));
    if (file->values.holds(id, value))
        return {};
    const bool isAttribute = file->tree.node(id).kind == XmlKind::Attribute;
    if (isAttribute && toText(value).empty()) {
        const std::string use = XmlSubtrees(*file).explainUse(path, id);
        if (!use.empty())
            return refused(use);
    }
    XmlValues::Spelled spelled = file->values.spell(id, value);
    if (!spelled.error.empty())
        return refused(spelled.error);
    file->editor.change(id, std::move(spelled));
    return {};
}

bool XmlDocument::namesType(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    return outcome.ok() && file->values.namesType(id);
}

SiblingPlace XmlDocument::placeOf(std::string_view path) const
{
    const NodeId id = file->find(path);
    if (id == noNode || file->tree.node(id).next == noNode)
        return {SiblingPlace::Kind::Last, {}};
    const XmlNode& node = file->tree.node(id);
    if (node.previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    SiblingPlace place{SiblingPlace::Kind::After, std::string(splitLast(path).parent)};
    file->appendComponent(place.sibling, node.previous);
    return place;
}

std::string XmlDocument::getBytes() const
{
    const XmlTree& tree = file->tree;
    return file->spelling.encoding.encode(tree.isOriginal() ? tree.getOriginal() : XmlWriter(tree).write());
}

std::optional<Value> XmlDocument::valueAt(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    return outcome.ok() ? std::optional(file->values.read(id)) : std::nullopt;
}

std::optional<Span> XmlDocument::locate(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return std::nullopt;
    XmlWriter writer(file->tree, id);
    const std::string text = writer.write();
    const TextEncoding& encoding = file->spelling.encoding;
    std::string_view value = file->tree.text(id, XmlPart::Value);
    std::size_t begin = writer.getLocation();
    const XmlNode& node = file->tree.node(id);
    if (node.kind != XmlKind::Attribute) { // a new one may have taken comments of the former one along
        const bool isBlankText = node.kind == XmlKind::Text && isXmlBlank(value);
        const XmlSpan span = findXmlValue(value, node.keepsBlanks && !isBlankText);
        begin += span.begin;
        value = value.substr(span.begin, span.end - span.begin);
    }
    return Span{encoding.byteOrderMarkSize() + encoding.sizeOf(std::string_view(text).substr(0, begin)),
                encoding.sizeOf(value)};
}

void XmlDocument::visitSpans(const SpanVisitor& visitor) const
{
    const XmlTree& tree = file->tree;
    if (!tree.isOriginal()) {
        Document::visitSpans(visitor);
        return;
    }
    SpanEncoder encoder(file->spelling.encoding, tree.getOriginal());
    walk([&](const std::string& path, NodeId id) {
        const XmlNode& node = tree.node(id);
        if (file->values.read(id).type != Type::Group)
            visitor(path, encoder.encode({node.value, node.closing - node.value}));
    });
}

std::optional<std::string> XmlDocument::spell(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    return outcome.ok() ? std::optional(file->values.spellingOf(id)) : std::nullopt;
}

Outcome XmlDocument::respell(std::string_view path, std::string_view spelling)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    const std::string error = file->values.explainMisspelling(id, spelling);
    if (!error.empty())
        return refused(Reason::tr("%1 does not spell a value: %2", {quoted(spelling), error}));
    const auto respelled = [&] {
        file->editor.respell(id, spelling);
        return Outcome();
    };
    return mayChangeReading(path) ? editReading(respelled) : respelled();
}

NodeId XmlDocument::findValue(std::string_view path, Outcome& outcome) const
{
    const NodeId id = file->find(path);
    if (id == noNode)
        outcome = refused(Reason::tr("there is no entry %1", {quoted(path)}));
    else if (file->values.read(id).type == Type::Group)
        outcome = refused(Reason::tr("%1 is a group, which has no value of its own", {quoted(path)}));
    return id;
}

Outcome XmlDocument::insert(std::string_view path, const Value& value)
{
    const auto inserted = [&] { return XmlInsertion(*file).insert(path, value); };
    if (!mayChangeReading(path))
        return inserted();
    if (!file->run)
        return editReading(inserted);
    Outcome outcome = inserted();
    if (outcome.ok()) // the rest of its new element follows
        file->tree.node(file->find(splitLast(path).parent)).setPreformatted(toText(value) == "preserve");
    return outcome;
}

Outcome XmlDocument::endRun(std::string& refusedPath)
{
    Outcome outcome;
    const auto run = std::exchange(file->run, std::nullopt);
    for (const XmlFile::Lacking& lacking : run.value_or(std::vector<XmlFile::Lacking>())) {
        outcome = XmlInsertion(*file).checkSurroundings(lacking.node);
        refusedPath = lacking.path;
        if (!outcome.ok())
            break;
    }
    return outcome;
}

Outcome XmlDocument::remove(std::string_view path)
{
    return mayChangeReading(path) ? editReading([&] { return removeNode(path); }) : removeNode(path);
}

Outcome XmlDocument::removeNode(std::string_view path)
{
    const NodeId id = file->find(path);
    if (id == noNode)
        return path.empty() ? refused(Reason::tr("the whole document cannot be removed"))
                            : refused(Reason::tr("there is no entry %1", {quoted(path)}));
    if (id != file->tree.getRoot()) {
        const bool isAttribute = file->tree.node(id).kind == XmlKind::Attribute;
        const std::string use = isAttribute ? XmlSubtrees(*file).explainUse(path, id) : std::string();
        if (use.empty())
            file->editor.remove(id);
        return refused(use);
    }
    if (!file->editor.standsAlone(id))
        return refused(Reason::tr(
            "%1 is the root element, without which the comments and declarations around it would not be XML",
            {quoted(path)}));
    auto fresh = std::make_unique<XmlFile>(std::string());
    fresh->spelling.lineEnd = file->spelling.lineEnd;
    if (file->spelling.hasByteOrderMark())
        fresh->spelling.encoding = file->spelling.encoding;
    file = std::move(fresh);
    return {};
}

std::optional<Outcome> XmlDocument::rename(std::string_view path, std::string_view name)
{
    const PathEnds ends = splitLast(path);
    std::optional<Outcome> renamed;
    const auto rename = [&] {
        renamed = XmlSubtrees(*file).rename(path, name);
        return renamed.value_or(Outcome());
    };
    const bool isRoot = ends.parent.empty() && holdsXmlTexts(ends.last) != holdsXmlTexts(name);
    if (!isRoot && !file->entities.hasTokens() && !mayChangeReading(path) && !mayChangeReading(name))
        rename();
    else if (Outcome outcome = editReading(rename); renamed)
        renamed = outcome;
    return renamed;
}

std::optional<Excerpt> XmlDocument::excerpt(std::string_view path) const
{
    return XmlSubtrees(*file).excerpt(path);
}

bool XmlDocument::hasComments(std::string_view path) const
{
    const auto found = excerpt(path);
    return found && (!found->after.empty() || hasXmlComment(found->text));
}

bool XmlDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    const bool isRun = file->run.has_value();
    if (isRun && !file->run->empty()) // what still lacks something is known by its node
        return false;
    std::string before = getBytes();
    file->run.emplace(); // an element may declare its own prefix
    const auto text = XmlSubtrees(*file).insertInText(path, excerpt);
    bool isInserted = text && parse(file->spelling.encoding.encode(*text)).ok();
    const NodeId id = isInserted ? file->find(path) : noNode;
    const std::vector<NodeId> lacking =
        id == noNode ? std::vector<NodeId>() : XmlSubtrees(*file).withoutPrefix(id);
    isInserted = id != noNode && (isRun || lacking.empty());
    if (!isInserted)
        parseAgain(std::move(before));
    if (isRun)
        file->run.emplace();
    if (isRun && isInserted) {
        for (const NodeId node : lacking)
            file->run->push_back({node, std::string(path)});
    }
    return isInserted;
}

Outcome XmlDocument::removeExcerpt(std::string_view path)
{
    const NodeId id = file->find(path);
    if (id != noNode && id != file->tree.getRoot() && file->tree.node(id).kind == XmlKind::Element)
        file->editor.getLayout().dropLinesAbove(id);
    return remove(path);
}

bool XmlDocument::removalMovesSiblings(std::string_view path) const
{
    const NodeId id = file->find(path);
    if (id == noNode)
        return false;
    const XmlNode& node = file->tree.node(id);
    const bool hasSuccessor = file->tree.find(node.parent, {node.kind, node.name, node.number + 1}) != noNode;
    return hasSuccessor || file->editor.joinsTexts(id);
}

} // namespace Repository::Documents
