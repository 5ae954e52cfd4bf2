#include "repository/documents/xml/XmlReader.h"

#include "repository/documents/common/ValueSpans.h"
#include "repository/documents/xml/XmlScanner.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTypeTag.h"

#include <expat.h>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Repository::Documents {

// What the parser calls. It is written in C, so that no exception may pass through it.
struct XmlHandlers
{
    XmlReader& reader;
    XML_Parser parser;

    template <typename Step>
    static void run(void* self, const Step& step)
    {
        auto& handlers = *static_cast<XmlHandlers*>(self);
        const auto at = static_cast<std::size_t>(XML_GetCurrentByteIndex(handlers.parser));
        bool goesOn = false;
        try {
            goesOn = step(handlers.reader, at);
        } catch (const std::bad_alloc&) {
            handlers.reader.fail(at, Reason::tr("there is not enough memory for a file of this size"));
        }
        if (!goesOn)
            XML_StopParser(handlers.parser, XML_FALSE);
    }

    static void XMLCALL start(void* self, const XML_Char*, const XML_Char**)
    {
        run(self, [](XmlReader& xml, std::size_t at) { return xml.open(at); });
    }

    static void XMLCALL end(void* self, const XML_Char*)
    {
        run(self, [](XmlReader& xml, std::size_t at) { return xml.close(at); });
    }

    static void XMLCALL attribute(void* self, const XML_Char* element, const XML_Char* name,
                                  const XML_Char* type, const XML_Char*, int)
    {
        if (std::string_view(type) != "CDATA")
            run(self, [=](XmlReader& xml, std::size_t) { return xml.declareTokens(element, name); });
    }

    static void XMLCALL entity(void* self, const XML_Char* name, int isParameter, const XML_Char* text,
                               int length, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*)
    {
        if (isParameter || !text)
            return;
        const std::string_view declared(text, static_cast<std::size_t>(length));
        run(self, [=](XmlReader& xml, std::size_t) { return xml.declare(name, declared); });
    }
};

namespace {

using ParserOwner = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

constexpr std::string_view closingBegin = "</";
constexpr std::size_t usualNodeSize = 40; // bytes of text for a node

} // namespace

Outcome XmlReader::read()
{
    if (isXmlBlank(text))
        return {};
    if (text.size() > maximumSize)
        return outcomeAt(text, 0, Reason::tr("the file is larger than 2 GB, the most that is read"));
    // Expat would take some texts with it for UTF-16.
    const std::size_t nul = text.find('\0');
    if (nul != std::string::npos)
        return outcomeAt(text, nul, explainUnheldXml(std::string_view(text).substr(nul, 1)));
    tree.reserve(text.size() / usualNodeSize);
    if (scan())
        return {};
    startAgain();
    return parse();
}

// True when the text is so plain that it needs no parser.
bool XmlReader::scan()
{
    XmlScanner scanner(text);
    while (true) {
        switch (scanner.next()) {
        case XmlScanner::Event::Open:
            if (!open(scanner.getPosition()))
                return false;
            break;
        case XmlScanner::Event::Close:
            close(scanner.getPosition());
            break;
        case XmlScanner::Event::End:
            return true;
        case XmlScanner::Event::NotPlain:
            return false;
        }
    }
}

void XmlReader::startAgain()
{
    tree.clear();
    fault.clear();
    current = noNode;
    depth = cursor = 0;
}

Outcome XmlReader::parse()
{
    const ParserOwner parser(XML_ParserCreate("UTF-8"), &XML_ParserFree);
    if (!parser)
        throw std::bad_alloc();
    XmlHandlers handlers{*this, parser.get()};
    XML_SetUserData(parser.get(), &handlers);
    XML_SetElementHandler(parser.get(), &XmlHandlers::start, &XmlHandlers::end);
    XML_SetEntityDeclHandler(parser.get(), &XmlHandlers::entity);
    XML_SetAttlistDeclHandler(parser.get(), &XmlHandlers::attribute);
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK)
        return {};
    if (fault.empty()) {
        const auto at = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
        fail(at, explain(XML_GetErrorCode(parser.get()), at));
    }
    return outcomeAt(text, faultOffset, std::move(fault));
}

bool XmlReader::declare(std::string_view name, std::string_view declared)
{
    if (declared.find('&') != std::string_view::npos && ++nestedEntities > maximumNestedEntities)
        return fail(cursor, Reason::tr("more than %1 entities refer to others, which is more than is read",
                                       {std::to_string(maximumNestedEntities)}));
    entities.declare(std::string(name), std::string(declared));
    return true;
}

bool XmlReader::declareTokens(std::string_view element, std::string_view attribute)
{
    entities.declareTokens(std::string(element), std::string(attribute));
    return true;
}

bool XmlReader::open(std::size_t at)
{
    if (depthInEntity > 0 || text[at] != '<') {
        ++depthInEntity;
        return true;
    }
    if (++depth > maximumDepth)
        return fail(at, Reason::tr("more than %1 elements lie within each other, which is more than is read",
                                   {std::to_string(maximumDepth)}));
    const bool isBlank = afterBlanks(cursor) == at;
    if (!isBlank && current != noNode)
        addText(at);
    XmlNode node;
    node.parent = current;
    node.leading = std::uint32_t(cursor);
    node.label = std::uint32_t(at);
    node.name = tree.getNames().internFront(std::string_view(text).substr(at + 1));
    if (current != noNode)
        node.inheritBlanks(tree.node(current));
    else
        node.keepsBlanks = holdsXmlTexts(tree.getNames().nameOf(node.name));
    current = tree.read(node);
    const std::size_t tagEnd = addAttributes(current, at + 1 + tree.getNames().nameOf(node.name).size());
    std::size_t closing = afterBlanks(tagEnd);
    closing += text[closing] == '/' ? 1 : 0;
    XmlNode& element = tree.node(current);
    element.tagEnd = std::uint32_t(tagEnd);
    element.front = element.value = element.closing = element.end = std::uint32_t(closing + 1);
    if (!isBlank)
        tagAll(current, std::string_view(text).substr(cursor, at - cursor));
    cursor = closing + 1;
    return true;
}

// Takes up the attributes from after the name of an element on; gives where the last one ends.
std::size_t XmlReader::addAttributes(NodeId element, std::size_t at)
{
    while (true) {
        const std::size_t label = afterBlanks(at);
        if (text[label] == '>' || text[label] == '/')
            return at;
        XmlNode node;
        node.kind = XmlKind::Attribute;
        node.parent = element;
        node.leading = std::uint32_t(at);
        node.label = std::uint32_t(label);
        node.name = tree.getNames().internFront(std::string_view(text).substr(label));
        const std::size_t nameEnd = label + tree.getNames().nameOf(node.name).size();
        const std::size_t quote = afterBlanks(afterBlanks(nameEnd) + 1);
        const std::size_t closing = text.find(text[quote], quote + 1);
        node.tagEnd = node.front = node.value = std::uint32_t(quote + 1);
        node.closing = std::uint32_t(closing);
        at = closing + 1;
        node.end = std::uint32_t(at);
        readSpace(tree.read(node));
    }
}

// What an element says about the blanks in it.
void XmlReader::readSpace(NodeId attribute)
{
    const XmlNode& node = tree.node(attribute);
    if (tree.getNames().nameOf(node.name) != xmlSpace)
        return;
    tree.node(node.parent).setPreformatted(tree.text(attribute, XmlPart::Value) == "preserve");
}

std::size_t XmlReader::afterBlanks(std::size_t at) const
{
    while (isXmlBlank(text[at]))
        ++at;
    return at;
}

// Takes up the text between two tags of the current element, if there is any.
void XmlReader::addText(std::size_t end)
{
    const bool keepsBlanks = tree.node(current).keepsBlanks;
    const std::string_view between = std::string_view(text).substr(cursor, end - cursor);
    const XmlSpan span = findXmlValue(between, keepsBlanks && !isXmlBlank(between));
    if (span.isEmpty())
        return;
    XmlNode node;
    node.kind = XmlKind::Text;
    node.parent = current;
    node.inheritBlanks(tree.node(current));
    node.leading = std::uint32_t(cursor);
    node.label = node.tagEnd = node.front = node.value = std::uint32_t(cursor + span.begin);
    cursor += span.end;
    node.closing = node.end = std::uint32_t(cursor);
    node.isTagged = !readXmlTypeTags(std::string_view(text).substr(node.leading, span.begin)).empty();
    tree.read(node);
}

// Notes for which nodes of an element a type tag in its leading trivia is there.
void XmlReader::tagAll(NodeId element, std::string_view leading)
{
    const std::size_t last = leading.find_last_of('>');
    if (last == std::string_view::npos || last == 0 || leading[last - 1] != '?')
        return;
    for (const XmlTypeTag& tag : readXmlTypeTags(leading)) {
        const auto name = tree.getNames().find(tag.attribute);
        const NodeId attribute =
            tag.attribute.empty() || !name ? noNode : tree.find(element, {XmlKind::Attribute, *name, 1});
        if (tag.attribute.empty())
            tree.node(element).isTagged = true;
        else if (attribute != noNode)
            tree.node(attribute).isTagged = true;
    }
}

bool XmlReader::close(std::size_t at)
{
    if (depthInEntity > 0) {
        --depthInEntity;
        return true;
    }
    const XmlNode& node = tree.node(current);
    const bool closesItself = text[node.front - 2] == '/' && cursor == at;
    const std::size_t nameSize = tree.getNames().nameOf(node.name).size();
    finish(current, at, closesItself ? at : afterBlanks(at + closingBegin.size() + nameSize) + 1);
    return true;
}

void XmlReader::finish(NodeId element, std::size_t closing, std::size_t end)
{
    if (tree.node(element).isContainer()) {
        addText(closing);
        tree.node(element).value = tree.node(element).closing = std::uint32_t(cursor);
        tree.complete(element);
    } else {
        const XmlSpan value = findXmlValue(std::string_view(text).substr(cursor, closing - cursor),
                                           tree.node(element).keepsBlanks);
        tree.node(element).value = std::uint32_t(cursor + value.begin);
        tree.node(element).closing = std::uint32_t(cursor + value.end);
    }
    tree.node(element).end = std::uint32_t(end);
    cursor = end;
    current = tree.node(element).parent;
    --depth;
}

bool XmlReader::fail(std::size_t at, std::string message)
{
    faultOffset = at;
    fault = std::move(message);
    return false;
}

std::string XmlReader::explain(int error, std::size_t at) const
{
    switch (error) {
    case XML_ERROR_NO_MEMORY:
        return Reason::tr("there is not enough memory for a file of this size");
    case XML_ERROR_NO_ELEMENTS:
        return current == noNode ? Reason::tr("the file ends without a root element")
                                 : Reason::tr("the file ends inside of %1", {currentTag()});
    case XML_ERROR_TAG_MISMATCH:
        return Reason::tr("this end tag does not belong to %1, which is still open", {currentTag()});
    case XML_ERROR_INVALID_TOKEN:
        return explainToken(at);
    case XML_ERROR_UNCLOSED_TOKEN:
        return Reason::tr("the file ends inside of a tag, comment or reference that begins here");
    case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
        return Reason::tr("nothing but comments may follow the root element");
    case XML_ERROR_DUPLICATE_ATTRIBUTE:
        return Reason::tr("this tag has an attribute twice");
    case XML_ERROR_UNDEFINED_ENTITY: {
        const std::size_t end = text.find(';', at);
        return Reason::tr("the entity %1 is not declared", {quoted(text.substr(at, end - at) + ';')});
    }
    case XML_ERROR_RECURSIVE_ENTITY_REF:
        return Reason::tr("an entity refers to itself");
    case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
        return Reason::tr(
            "the entities grow to more than a hundred times of what the file holds, as in an attack");
    default:
        return Reason::tr("this is not well-formed XML: %1",
                          {std::string(XML_ErrorString(static_cast<XML_Error>(error)))});
    }
}

std::string XmlReader::explainToken(std::size_t at) const
{
    const std::string_view rest = std::string_view(text).substr(at);
    const std::size_t length = utf8Length(rest);
    if (length == 0)
        return Reason::tr("bytes that are not valid text");
    if (rest.front() == '\n' || rest.front() == '\r')
        return Reason::tr("the line must not end here");
    if (const auto begin = openComment(at))
        return Reason::tr("%1 must not be within a comment, and the one that begins in line %2 has not ended",
                          {"\"--\"", std::to_string(placeInFile(text, *begin).line)});
    const std::string unheld = explainUnheldXml(rest.substr(0, length));
    return unheld.empty() ? Reason::tr("%1 is not allowed here", {quoted(rest.substr(0, length))}) : unheld;
}

// Where the comment begins that has two hyphens before that place.
std::optional<std::size_t> XmlReader::openComment(std::size_t at) const
{
    constexpr std::string_view mark("<!--");
    if (at <= mark.size() || text.compare(at - 2, 2, "--") != 0)
        return {};
    const std::size_t begin = text.rfind(mark, at - mark.size() - 1);
    const std::size_t end = text.rfind("-->", at);
    const bool isOpen = begin != std::string::npos && (end == std::string::npos || end < begin);
    return isOpen ? std::optional<std::size_t>(begin) : std::nullopt;
}

std::string XmlReader::currentTag() const
{
    if (current == noNode)
        return Reason::tr("the root element");
    const XmlNode& node = tree.node(current);
    return Reason::tr("<%1> of line %2", {std::string(tree.getNames().nameOf(node.name)),
                                          std::to_string(outcomeAt(text, node.label).line)});
}

} // namespace Repository::Documents
