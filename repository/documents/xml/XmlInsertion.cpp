#include "repository/documents/xml/XmlInsertion.h"

#include "repository/documents/xml/XmlReader.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr std::string_view declarationOfPrefix = "xmlns:";

std::string noElementsBeside(std::string_view text)
{
    return Reason::tr("%1 has no siblings to follow", {quoted(text)});
}

} // namespace

Outcome XmlInsertion::insert(std::string_view path, const Value& value)
{
    const PathMatch way = file.match(path);
    if (!way.isPath)
        return refused(
            Reason::tr("%1 is not a path: its parts between the dots must not be empty", {quoted(path)}));
    if (way.missing.empty())
        return insertValue(way.node, path, value);
    std::vector<XmlComponent> steps;
    Outcome outcome = checkWay(way, value, steps);
    if (!outcome.ok())
        return outcome;
    const char quote = editor.quoteFor(steps.size() == 1 ? way.node : noNode);
    XmlValues::Spelled spelled;
    if (value.type != Type::Group)
        spelled = values.spellNew(steps.back().kind, quote, value,
                                  way.node == noNode ? holdsXmlTexts(steps.front().name)
                                                     : tree.node(way.node).keepsBlanks);
    if (!spelled.error.empty())
        return refused(spelled.error);
    NodeId id = way.node;
    for (const XmlComponent& step : steps) {
        if (id == noNode)
            id = editor.createRoot(step.name);
        else
            id = editor.append(id, {step.kind, tree.getNames().intern(step.name), step.number},
                               file.run.has_value());
        if (file.run && !checkSurroundings(id).ok())
            file.run->push_back({id, std::string(path)});
    }
    if (value.type != Type::Group)
        editor.give(id, std::move(spelled));
    return {};
}

// Gives a value to an element that has none.
Outcome XmlInsertion::insertValue(NodeId id, std::string_view path, const Value& value)
{
    if (value.type == Type::Group || values.read(id).type != Type::Group)
        return refused(Reason::tr("there is already an entry %1", {quoted(path)}));
    const XmlNode& node = tree.node(id);
    if (node.isContainer())
        return refused(Reason::tr("%1 holds elements; a text beside them is an entry %2 of its own",
                                  {quoted(path), quoted(xmlTextComponent)}));
    const bool needsNewTag = !node.isTagged && isXmlBlank(editor.contentOf(id));
    XmlValues::Spelled spelled;
    if (!needsNewTag)
        spelled = values.spell(id, value);
    if (needsNewTag || (!spelled.error.empty() && !node.isTagged))
        spelled = values.spellNew(node.kind, '"', value, node.keepsBlanks);
    if (!spelled.error.empty())
        return refused(spelled.error);
    editor.give(id, std::move(spelled));
    return {};
}

// Whether the entries that are missing on the way can be made, and as what.
Outcome XmlInsertion::checkWay(const PathMatch& way, const Value& value,
                               std::vector<XmlComponent>& steps) const
{
    if (way.node == noNode && tree.getRoot() != noNode)
        return refused(Reason::tr("a file of xml has one root element, here %1; everything else lies in it",
                                  {quoted(tree.getNames().nameOf(tree.node(tree.getRoot()).name))}));
    if (way.depth + way.missing.size() > XmlReader::maximumDepth)
        return refused(Reason::tr("more than %1 elements would lie within each other",
                                  {std::to_string(XmlReader::maximumDepth)}));
    NodeId parent = way.node;
    for (const std::string_view component : way.missing) {
        const bool isLast = steps.size() + 1 == way.missing.size();
        const auto step = readXmlComponent(component);
        if (!step)
            return refused(Reason::tr("%1 is not how a name is written in a path", {quoted(component)}));
        Outcome outcome = checkStep(parent, component, *step);
        if (!outcome.ok())
            return outcome;
        if (step->kind != XmlKind::Element && (!isLast || value.type == Type::Group))
            return refused(Reason::tr("%1 is an attribute or a text, which holds no other entries",
                                      {quoted(component)}));
        if (step->kind != XmlKind::Element && parent == noNode && steps.empty())
            return refused(Reason::tr("%1 needs an element to be in", {quoted(component)}));
        steps.push_back(*step);
        parent = noNode;
    }
    return {};
}

// Parent is the element that is there, or noNode for one that is yet to be made.
Outcome XmlInsertion::checkStep(NodeId parent, std::string_view component, const XmlComponent& step) const
{
    if (parent != noNode && tree.node(parent).kind != XmlKind::Element)
        return refused(Reason::tr("an attribute or a text of xml holds no other entries"));
    const bool fillsValue = step.kind != XmlKind::Attribute && parent != noNode &&
                            !tree.node(parent).isContainer() && values.read(parent).type != Type::Group;
    if (fillsValue)
        return refused(
            Reason::tr("the element above %1 has a value, and xml has no place for both a value and elements",
                       {quoted(component)}));
    if (step.number > 1) {
        const std::string before = joinNumber(splitNumber(component).name, step.number - 1);
        if (parent == noNode || file.findChild(parent, before) == noNode)
            return refused(Reason::tr("%1 can only be added after %2, which is not there",
                                      {quoted(component), quoted(before)}));
    }
    if (step.kind == XmlKind::Text) {
        const bool isBesideNodes = parent != noNode && tree.node(parent).isContainer();
        if (!isBesideNodes)
            return file.run ? Outcome() : refused(noElementsBeside(component));
        if (tree.node(tree.node(parent).last).kind == XmlKind::Text)
            return refused(Reason::tr("%1 would become part of the text before it", {quoted(component)}));
        return {};
    }
    Outcome outcome = checkName(step.name);
    return file.run || !outcome.ok() ? outcome : checkPrefix(parent, step.name);
}

Outcome XmlInsertion::checkName(std::string_view name) const
{
    if (!isXmlName(name))
        return refused(Reason::tr("%1 cannot be a name in xml: names are of letters, digits, \"-\", \"_\", "
                                  "\".\" and one \":\", and begin with a letter or \"_\"",
                                  {quoted(name)}));
    if (!file.spelling.canHold(name))
        return refused(
            Reason::tr("the encoding of the file lacks a character of the name %1", {quoted(name)}));
    return {};
}

// A prefix must be declared where it is used, or namespace-aware readers refuse the file.
Outcome XmlInsertion::checkPrefix(NodeId element, std::string_view name) const
{
    const std::string_view prefix = name.substr(0, std::min(name.find(':'), name.size()));
    if (prefix == name || prefix == "xml" || prefix == "xmlns")
        return {};
    const auto declaration = tree.getNames().find(std::string(declarationOfPrefix) + std::string(prefix));
    for (; declaration && element != noNode; element = tree.node(element).parent) {
        if (tree.find(element, {XmlKind::Attribute, *declaration, 1}) != noNode)
            return {};
    }
    return refused(
        Reason::tr("the prefix of %1 is not declared: add the attribute %2 to an element around it first",
                   {quoted(name), quoted("@" + std::string(declarationOfPrefix) + std::string(prefix))}));
}

// What a node needs beside itself.
Outcome XmlInsertion::checkSurroundings(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    if (node.kind != XmlKind::Text)
        return checkPrefix(node.kind == XmlKind::Element ? id : node.parent,
                           tree.getNames().nameOf(node.name));
    return tree.node(node.parent).count > 1 ? Outcome() : refused(noElementsBeside(xmlTextComponent));
}

} // namespace Repository::Documents
