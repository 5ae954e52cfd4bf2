#include "repository/documents/xml/XmlValues.h"

#include "repository/documents/common/NumberStyle.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/xml/XmlReader.h"
#include "repository/documents/xml/XmlRespelling.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Repository::Documents {

namespace {

constexpr std::string_view selfClosing = "/>";

bool closesItself(std::string_view tagEnd)
{
    return tagEnd.size() >= selfClosing.size() &&
           tagEnd.substr(tagEnd.size() - selfClosing.size()) == selfClosing;
}

// The spelling of an element without content: never that of a text.
bool isSelfClosing(std::string_view spelling)
{
    return spelling.size() > selfClosing.size() && spelling[0] == '<' && closesItself(spelling) &&
           isXmlBlank(spelling.substr(1, spelling.size() - 1 - selfClosing.size()));
}

// The same when decoded, in an element and in an attribute.
bool isPlainXml(std::string_view spelling)
{
    static constexpr auto isSpecial = [] {
        std::array<bool, 256> table{};
        for (const char c : {'&', '<', '\t', '\r', '\n'})
            table[static_cast<unsigned char>(c)] = true;
        return table;
    }();
    return std::none_of(spelling.begin(), spelling.end(),
                        [](char c) { return isSpecial[static_cast<unsigned char>(c)]; });
}

// The text as bytes are spelled, and U+FFFE and U+FFFF, which xml lacks, as bytes too.
std::string escaped(const std::string& text)
{
    std::string escapes = toText({Type::ByteArray, text});
    for (std::size_t at = escapes.find("\xEF\xBF"); at != std::string::npos;
         at = escapes.find("\xEF\xBF", at + 1)) {
        if (escapes[at + 2] == '\xBE' || escapes[at + 2] == '\xBF')
            escapes.replace(at, 3, escapes[at + 2] == '\xBE' ? "\\xef\\xbf\\xbe" : "\\xef\\xbf\\xbf");
    }
    return escapes;
}

} // namespace

Value XmlValues::read(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    if (node.isContainer())
        return {};
    const std::string_view spelled = tree.text(id, XmlPart::Value);
    if (!node.isTagged && !spelled.empty() && isPlainXml(spelled) && !entities.hasTokens())
        return plainValue(spelled);
    Context context = contextOf(id);
    context.closesItself = closesItself(tree.text(id, XmlPart::TagEnd));
    return interpret(context, spelled);
}

bool XmlValues::holds(NodeId id, const Value& value) const
{
    return isSame(read(id), value);
}

std::optional<XmlTypeTag> XmlValues::tagOf(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    if (!node.isTagged)
        return std::nullopt;
    const bool isAttribute = node.kind == XmlKind::Attribute;
    const std::string_view name = isAttribute ? tree.getNames().nameOf(node.name) : std::string_view();
    for (const XmlTypeTag& tag :
         readXmlTypeTags(tree.text(isAttribute ? node.parent : id, XmlPart::Leading))) {
        if (tag.attribute == name)
            return tag;
    }
    return std::nullopt;
}

// For a value about to be written: its element does not close itself, unless a type tag allows it.
XmlValues::Context XmlValues::contextOf(NodeId id) const
{
    constexpr std::string_view tellTales = "\r\n<";
    Context context;
    context.kind = tree.node(id).kind;
    context.tag = tagOf(id);
    const std::string_view closing = tree.text(id, XmlPart::Closing);
    if (context.kind == XmlKind::Attribute)
        context.quote = closing[0];
    context.keepsBlanks = tree.node(id).keepsBlanks;
    if (context.kind == XmlKind::Attribute && entities.hasTokens())
        context.isOfTokens = entities.isOfTokens(tree.getNames().nameOf(tree.node(tree.node(id).parent).name),
                                                 tree.getNames().nameOf(tree.node(id).name));
    if (context.kind == XmlKind::Element) {
        const std::string_view after = closing.substr(0, std::min(closing.rfind("</"), closing.size()));
        context.isOpen = after.find_first_of(tellTales) != std::string_view::npos ||
                         tree.text(id, XmlPart::Front).find_first_of(tellTales) != std::string_view::npos;
        context.closesItself = staysClosed(id);
    }
    return context;
}

// What the value of a place would be with this spelling.
Value XmlValues::interpret(const Context& context, std::string_view spelled) const
{
    std::string text = context.kind == XmlKind::Attribute ? decodeXmlAttribute(spelled, entities)
                                                          : decodeXmlText(spelled, entities);
    if (context.isOfTokens)
        text = joinedXmlTokens(text);
    Value plain = interpretPlain(context, spelled, text);
    if (!context.tag || (context.kind == XmlKind::Text && spelled.empty()))
        return plain;
    if (context.tag->escapes) {
        const auto bytes = readFileText(text, Type::ByteArray);
        if (!bytes.ok())
            return plain;
        text = std::get<std::string>(bytes.value.data);
    }
    return readTaggedValue(context.tag->type, text, std::move(plain));
}

Value XmlValues::interpretPlain(const Context& context, std::string_view spelled,
                                const std::string& text) const
{
    const bool isEmpty = text.empty() && isLiteralXml(spelled);
    const bool isGroup =
        context.kind == XmlKind::Text || context.closesItself || context.isOpen || !spelled.empty();
    if (context.kind != XmlKind::Attribute && isEmpty && isGroup)
        return {};
    return isLiteralXml(spelled) ? plainValue(text) : Value{Type::String, text};
}

// An element that closed itself does so again if a type tag says what it holds.
bool XmlValues::staysClosed(NodeId id) const
{
    const std::optional<XmlTypeTag> tag = tagOf(id);
    if (!tag || tree.node(id).kind != XmlKind::Element)
        return false;
    const auto original = tree.originalText(id, XmlPart::TagEnd);
    return original ? closesItself(*original) : tag->type == Type::Null;
}

std::string XmlValues::spellPlain(const Context& context, std::string_view text) const
{
    return context.kind == XmlKind::Attribute ? spelling.spellAttribute(text, context.quote)
                                              : spelling.spellText(text, context.keepsBlanks);
}

std::optional<std::string> XmlValues::spellAsText(const Context& context, std::string_view text) const
{
    return context.kind == XmlKind::Attribute ? spelling.spellAttributeAsText(text, context.quote)
                                              : spelling.spellSection(text);
}

bool XmlValues::namesType(NodeId id) const
{
    return tagOf(id) ||
           (tree.node(id).kind != XmlKind::Attribute && isXmlSection(tree.text(id, XmlPart::Value)));
}

XmlValues::Spelled XmlValues::spell(NodeId id, const Value& value) const
{
    Context context = contextOf(id);
    const Type present = context.tag ? read(id).type : Type::Group;
    if (!context.tag || present == Type::Null || present == value.type)
        return spellIn(context, id, value);
    const std::string_view attribute = context.tag->attribute;
    context.tag.reset();
    context.closesItself = false;
    Spelled spelled = spellIn(context, id, value);
    if (spelled.error.empty())
        return spelled;
    context.tag = XmlTypeTag{attribute, value.type, !explainUnheldXml(toText(value)).empty()};
    return spellIn(context, id, value);
}

// With the tag of the context, whatever the node has.
XmlValues::Spelled XmlValues::spellIn(const Context& context, NodeId id, const Value& value) const
{
    std::string text = toText(value);
    if (context.tag && context.tag->escapes)
        text = escaped(text);
    const std::string unheld = explainUnheldXml(text);
    if (!unheld.empty())
        return {{}, {}, unheld};
    const std::string_view current = tree.text(id, XmlPart::Value);
    const bool isAttribute = context.kind == XmlKind::Attribute;
    const std::string comments = isAttribute ? std::string() : xmlCommentsIn(current);
    const std::string plain = spellPlain(context, text) + comments;
    const auto asText = spellAsText(context, text);

    std::vector<std::string> candidates;
    const auto original = tree.originalText(id, XmlPart::Value);
    if (original && !original->empty())
        candidates.emplace_back(*original);
    if (!isAttribute && isXmlSection(current) && asText)
        candidates.push_back(*asText);
    if (const auto alike =
            value.type == Type::Double ? spellLike(std::get<double>(value.data), current) : std::nullopt)
        candidates.push_back(*alike);
    if (const auto around = spellAround(context, current, text))
        candidates.push_back(*around);
    candidates.push_back(plain);
    if (asText)
        candidates.push_back(*asText + comments);
    for (const std::string& candidate : candidates) {
        if (isSame(interpret(context, candidate), value))
            return {candidate, context.tag, {}};
    }
    const bool isNull = value.type == Type::Null;
    const Type loaded = interpret(context, plain).type;
    return {
        {},
        {},
        Reason::tr("%1 would be read as %2 again, since no type tag in the file gives the type of this entry",
                   {isNull ? describeType(Type::Null) : quoted(text), describeType(loaded)})};
}

std::optional<std::string> XmlValues::spellAround(const Context& context, std::string_view current,
                                                  std::string_view text) const
{
    const bool isAttribute = context.kind == XmlKind::Attribute;
    const XmlRespelling respelling(entities, [&](std::size_t begin, std::size_t end) {
        return isAttribute ? spelling.spellAttribute(text.substr(begin, end - begin), context.quote)
                           : spelling.spellText(text, begin, end, context.keepsBlanks);
    });
    const auto around = respelling.spell(current, text, !isAttribute && !context.keepsBlanks);
    const bool endsSection = around && !isAttribute && around->find("]]>") != std::string::npos;
    return endsSection ? std::nullopt : around;
}

XmlValues::Spelled XmlValues::spellNew(XmlKind kind, char quote, const Value& value, bool keepsBlanks) const
{
    Context context;
    context.keepsBlanks = keepsBlanks;
    context.kind = kind;
    context.quote = quote;
    std::string text = toText(value);
    std::string unheld = explainUnheldXml(text);
    for (const bool isTagged : {false, true}) {
        if (isTagged) {
            context.tag = XmlTypeTag{{}, value.type, !unheld.empty()};
            text = context.tag->escapes ? escaped(text) : text;
            unheld = explainUnheldXml(text);
            context.closesItself = value.type == Type::Null;
        }
        if (!unheld.empty())
            continue;
        for (const auto& candidate : {std::optional(spellPlain(context, text)), spellAsText(context, text)}) {
            if (candidate && isSame(interpret(context, *candidate), value))
                return {*candidate, context.tag, {}};
        }
    }
    return {{}, {}, unheld.empty() ? Reason::tr("xml cannot hold such a value in this place") : unheld};
}

void XmlValues::open(NodeId element)
{
    const std::string_view tagEnd = tree.text(element, XmlPart::TagEnd);
    if (!closesItself(tagEnd))
        return;
    std::string opened(tagEnd.substr(0, tagEnd.size() - selfClosing.size()));
    const std::size_t blanks = opened.find_last_not_of(" \t\r\n") + 1;
    if (opened.find_first_of("\r\n", blanks) == std::string::npos) // it has no line of its own
        opened.resize(blanks);
    tree.setText(element, XmlPart::TagEnd, opened + '>');
    tree.setText(element, XmlPart::Closing,
                 "</" + std::string(tree.getNames().nameOf(tree.node(element).name)) + '>');
}

void XmlValues::put(NodeId id, std::string spelled)
{
    const bool isElement = tree.node(id).kind == XmlKind::Element;
    if (isElement && spelled.empty() && staysClosed(id))
        spelled = '<' + std::string(tree.originalText(id, XmlPart::TagEnd).value_or(selfClosing));
    if (isElement && isSelfClosing(spelled)) {
        tree.setText(id, XmlPart::TagEnd, spelled.substr(1));
        tree.setText(id, XmlPart::Closing, {});
        spelled.clear();
    } else if (isElement) {
        open(id);
    }
    tree.setText(id, XmlPart::Value, std::move(spelled));
}

std::string XmlValues::spellingOf(NodeId id) const
{
    const std::string_view tagEnd = tree.text(id, XmlPart::TagEnd);
    return closesItself(tagEnd) ? '<' + std::string(tagEnd) : std::string(tree.text(id, XmlPart::Value));
}

std::string XmlValues::explainMisspelling(NodeId id, std::string_view spelled) const
{
    const bool isAttribute = tree.node(id).kind == XmlKind::Attribute;
    if (tree.node(id).kind == XmlKind::Element && isSelfClosing(spelled)) {
        Context closed = contextOf(id);
        closed.closesItself = true;
        return interpret(closed, {}).type == Type::Group
                   ? Reason::tr("no type tag gives a value to an element with nothing in it")
                   : std::string();
    }
    const std::string unheld = explainUnheldXml(spelled);
    if (!unheld.empty())
        return unheld;
    if (!spelling.canHold(spelled))
        return Reason::tr("the encoding of the file lacks a character of it");
    const std::string quote(isAttribute ? tree.text(id, XmlPart::Closing) : std::string_view());
    std::string sample = "<!DOCTYPE a SYSTEM \"\"><a";
    sample += isAttribute ? " a=" + quote + std::string(spelled) + quote + "/>"
                          : '>' + std::string(spelled) + "</a>";
    XmlTree parsed(std::move(sample));
    XmlEntities none;
    const Outcome outcome = XmlReader(parsed, none).read();
    if (!outcome.ok())
        return outcome.error;
    const XmlNode& root = parsed.node(parsed.getRoot());
    const NodeId onlyAttribute = isAttribute ? root.first : noNode;
    if (root.isContainer() || root.first != onlyAttribute || root.last != onlyAttribute)
        return Reason::tr("there is more than one value in it");
    const bool isBlankAround =
        !spelled.empty() && (isXmlBlank(spelled.front()) || isXmlBlank(spelled.back()));
    if (!isAttribute && isBlankAround && !tree.node(id).keepsBlanks)
        return Reason::tr("blanks around a value do not belong to it");
    for (const std::string_view reference : xmlReferencesIn(spelled)) {
        if (!isReferenceKnown(reference))
            return Reason::tr("the file declares no entity %1", {reference});
    }
    return interpret(contextOf(id), spelled).type == Type::Group ? Reason::tr("it has no value")
                                                                 : std::string();
}

// An entity may also be declared outside of the file; then the file refers to it.
bool XmlValues::isReferenceKnown(std::string_view reference) const
{
    return reference.size() > 2 && (entities.expand(reference.substr(1, reference.size() - 2)) ||
                                    tree.getOriginal().find(reference) != std::string::npos);
}

} // namespace Repository::Documents
