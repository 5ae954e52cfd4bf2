#include "repository/documents/yaml/YamlWriter.h"

#include "repository/documents/common/BranchGrowth.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/KeyRefusal.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/yaml/YamlList.h"
#include "repository/documents/yaml/YamlSpelling.h"
#include "repository/documents/yaml/YamlTree.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t longestKey = 1024; // bytes that a reader must look ahead

bool isList(const YamlBranch& branch)
{
    return branch.value && branch.value->type == Type::StringList && branch.children.empty();
}

bool isScalar(const YamlBranch& branch)
{
    return branch.value && branch.children.empty() && branch.value->type != Type::StringList;
}

bool needsTag(const Value& value)
{
    if (value.type == Type::String || value.type == Type::StringList)
        return false;
    const auto spelled = spellYamlValue(value, {}, {});
    return !spelled || !isSame(readYamlScalar(*spelled, 0), value);
}

} // namespace

std::string yamlKeyOf(std::string_view component, std::string& error, std::string_view former)
{
    const NumberedComponent name = splitNumber(component);
    const auto key = decodeKey(name.name);
    if (!key)
        error = explainNoKey(component);
    else if (!isUtf8(*key))
        error = Reason::tr("the key %1 is not valid UTF-8, which YAML demands", {quoted(component)});
    else if (*key == yamlOwnValueKey)
        error = Reason::tr("the key \"#value\" is kept for values of groups");
    else if (name.number > 1)
        error = Reason::tr("the key %1 would be in one map twice, which YAML forbids", {quoted(*key)});
    else if (key->find_first_of("\r\n") != std::string::npos)
        error = Reason::tr("the key %1 has a line break, which a key of YAML should not have",
                           {quoted(component)});
    else if (spellYamlKey(*key, former, true).size() > longestKey)
        error = Reason::tr("the key is longer than %1 bytes, which readers of YAML refuse",
                           {std::to_string(longestKey)});
    return key.value_or(std::string());
}

std::string growYamlBranch(const std::vector<Entry>& entries, YamlBranch& branch)
{
    return growBranch(entries, branch, [](std::string_view component, std::string& error) {
        return yamlKeyOf(component, error);
    });
}

void YamlWriter::fail(std::string reason)
{
    if (error.empty())
        error = std::move(reason);
}

void YamlWriter::writeTag(const YamlBranch& branch, std::size_t indentation)
{
    if (isScalar(branch) && needsTag(*branch.value))
        text.append(indentation, ' ') += writeTypeTag('#', branch.value->type) + style.lineEnd;
}

void YamlWriter::writeScalar(const Value& value, std::size_t indentation, bool inFlow)
{
    YamlPlace place;
    place.lineEnd = style.lineEnd;
    place.indentation = indentation;
    place.step = style.step;
    place.inFlow = inFlow;
    place.isBeforeBlank = true; // perhaps
    const bool isTagged = needsTag(value);
    if (isTagged && inFlow)
        fail(Reason::tr("YAML has no form for %1, and between brackets no comment can tag its type",
                        {describeType(value.type)}));
    const auto spelled = isTagged ? spellTaggedYamlValue(value, {}, place) : spellYamlValue(value, {}, place);
    if (!spelled)
        fail(Reason::tr("the text is not valid UTF-8, which YAML demands"));
    text += spelled.value_or(std::string());
}

void YamlWriter::writeMember(const YamlBranch& branch, std::size_t indentation)
{
    writeTag(branch, indentation);
    text.append(indentation, ' ') += spellYamlKey(branch.key, {}, false) + ':';
    const bool isSequence = (branch.isArray && !branch.children.empty()) ||
                            (isList(branch) && !std::get<Texts>(branch.value->data).empty());
    if (isScalar(branch)) {
        text += ' ';
        writeScalar(*branch.value, indentation, false);
    } else if (isSequence || !branch.children.empty()) {
        text += style.lineEnd;
        return writeContent(branch, indentation + (isSequence && !style.indentsLists ? 0 : style.step));
    } else {
        text += branch.isArray || branch.value ? " []" : " {}";
    }
    text += style.lineEnd;
}

void YamlWriter::writeElement(const YamlBranch& branch, std::size_t indentation)
{
    writeTag(branch, indentation);
    text.append(indentation, ' ') += '-';
    const bool isFilledList = isList(branch) && !std::get<Texts>(branch.value->data).empty();
    if (isScalar(branch)) {
        text += ' ';
        writeScalar(*branch.value, indentation, false);
    } else if (isFilledList || !branch.children.empty()) {
        const std::size_t from = text.size();
        const std::size_t below = indentation + 2;
        writeContent(branch, below);
        const bool beginsWithTag = text[from + below] == '#';
        if (beginsWithTag)
            text.insert(from, style.lineEnd);
        else
            text.replace(from, below, " ");
        return;
    } else {
        text += branch.isArray || branch.value ? " []" : " {}";
    }
    text += style.lineEnd;
}

void YamlWriter::writeContent(const YamlBranch& branch, std::size_t indentation)
{
    if (isList(branch)) {
        for (const std::string& item : std::get<Texts>(branch.value->data)) {
            const Value value{Type::String, item};
            YamlBranch element;
            element.value = &value;
            writeElement(element, indentation);
        }
        return;
    }
    if (branch.value) {
        YamlBranch own;
        own.key = yamlOwnValueKey;
        own.value = branch.value;
        if (branch.isArray)
            fail(Reason::tr("an array cannot have a value of its own"));
        writeMember(own, indentation);
    }
    for (const YamlBranch& child : branch.children)
        branch.isArray ? writeElement(child, indentation) : writeMember(child, indentation);
}

void YamlWriter::writeWhole(const YamlBranch& root, bool isOneOfSeveral)
{
    const bool isScalarRoot = isScalar(root);
    const bool isFilled =
        !root.children.empty() || (isList(root) && !std::get<Texts>(root.value->data).empty());
    if (isFilled)
        return writeContent(root, 0);
    writeTag(root, 0);
    if (isScalarRoot)
        writeScalar(*root.value, 0, false);
    else if (root.isArray || root.value)
        text += "[]";
    else if (isOneOfSeveral)
        text += "{}";
    if (isScalarRoot || root.isArray || root.value || isOneOfSeveral)
        text += style.lineEnd;
}

void YamlWriter::writeFlowMember(const YamlBranch& branch)
{
    text += spellYamlKey(branch.key, {}, true) + ": ";
    writeFlow(branch);
}

void YamlWriter::writeFlow(const YamlBranch& branch)
{
    if (isScalar(branch))
        return writeScalar(*branch.value, 0, true);
    if (isList(branch)) {
        const auto& list = std::get<Texts>(branch.value->data);
        if (!std::all_of(list.begin(), list.end(), [](const auto& item) { return isUtf8(item); }))
            return fail(Reason::tr("the text is not valid UTF-8, which YAML demands"));
        text += spellNewYamlList(list);
        return;
    }
    text += branch.isArray ? '[' : '{';
    bool isFirst = true;
    const auto separate = [&] {
        text += isFirst ? "" : ", ";
        isFirst = false;
    };
    if (branch.value) {
        YamlBranch own;
        own.key = yamlOwnValueKey;
        own.value = branch.value;
        separate();
        writeFlowMember(own);
    }
    for (const YamlBranch& child : branch.children) {
        separate();
        branch.isArray ? writeFlow(child) : writeFlowMember(child);
    }
    text += branch.isArray ? ']' : '}';
}

} // namespace Repository::Documents
