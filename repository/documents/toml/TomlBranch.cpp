#include "repository/documents/toml/TomlBranch.h"

#include "repository/documents/common/BranchGrowth.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/KeyRefusal.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlReader.h"
#include "repository/documents/toml/TomlTokens.h"
#include "repository/documents/toml/TomlTree.h"
#include "repository/documents/toml/TomlValue.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool isTableBranch(const TomlBranch& branch)
{
    return !branch.isArray && (!branch.value || !branch.children.empty());
}

} // namespace

bool TomlBranch::isPair() const
{
    return !isTables() && !isTableBranch(*this);
}

bool TomlBranch::isTables() const
{
    return isArray && !children.empty() && std::all_of(children.begin(), children.end(), isTableBranch);
}

std::string tomlKeyOf(std::string_view component, std::string& error)
{
    const NumberedComponent name = splitNumber(component);
    const auto key = decodeKey(name.name);
    if (!key)
        error = explainNoKey(component);
    else if (!isUtf8(*key))
        error = Reason::tr("the key %1 is not valid UTF-8, which TOML demands", {quoted(component)});
    else if (*key == tomlOwnValueKey)
        error = Reason::tr("the key \"#value\" is kept for values of tables");
    else if (name.number > 1)
        error = Reason::tr("the key %1 would be in one table twice, which TOML forbids", {quoted(*key)});
    return key.value_or(std::string());
}

std::string growTomlBranch(const std::vector<Entry>& entries, TomlBranch& branch)
{
    return growBranch(entries, branch, tomlKeyOf);
}

std::string joinTomlKey(const std::string& path, const std::string& part)
{
    return path.empty() ? part : path + '.' + part;
}

void TomlBranchWriter::writePair(const std::string& key, const Value& value)
{
    const auto plain = spellTomlValue(value, {}, style.place);
    TomlContent content{plain.value_or(std::string()), {}};
    if (!plain) {
        content = spellTaggedTomlValue(value, {}, style.place);
        text += style.indentation + writeTypeTag('#', value.type) + std::string(style.place.lineEnd);
    }
    if (error.empty())
        error = content.error;
    text += style.indentation + key + style.separator + content.spelling + std::string(style.place.lineEnd);
}

void TomlBranchWriter::writePairs(const std::string& key, const TomlBranch& branch)
{
    place = key;
    if (branch.value && branch.children.empty())
        return writePair(key, *branch.value);
    if (branch.isArray || branch.children.empty()) {
        text += style.indentation + key + style.separator;
        writeInline(branch, false);
        text += style.place.lineEnd;
        return;
    }
    if (branch.value)
        writePair(joinTomlKey(key, encodeTomlKey(tomlOwnValueKey)), *branch.value);
    for (const TomlBranch& child : branch.children)
        writePairs(joinTomlKey(key, encodeTomlKey(child.key)), child);
}

void TomlBranchWriter::writeHeader(const std::string& header)
{
    if (style.hasBlankLines && !text.empty())
        text += style.place.lineEnd;
    text += style.headerIndentation + header + std::string(style.place.lineEnd);
}

void TomlBranchWriter::writeElement(const std::string& path, const TomlBranch& branch)
{
    writeHeader("[[" + path + "]]");
    writeMembers(path, branch);
}

void TomlBranchWriter::writeTable(const std::string& path, const TomlBranch& branch)
{
    if (branch.isTables()) {
        for (const TomlBranch& element : branch.children)
            writeElement(path, element);
        return;
    }
    const auto isPair = [](const TomlBranch& child) { return child.isPair(); };
    const bool needsHeader = branch.value || branch.children.empty() ||
                             std::any_of(branch.children.begin(), branch.children.end(), isPair);
    if (needsHeader)
        writeHeader('[' + path + ']');
    writeMembers(path, branch);
}

void TomlBranchWriter::writeMembers(const std::string& path, const TomlBranch& branch)
{
    if (branch.value)
        writePair(encodeTomlKey(tomlOwnValueKey), *branch.value);
    for (const TomlBranch& child : branch.children) {
        if (child.isPair())
            writePairs(encodeTomlKey(child.key), child);
    }
    for (const TomlBranch& child : branch.children) {
        if (!child.isPair())
            writeTable(joinTomlKey(path, encodeTomlKey(child.key)), child);
    }
}

void TomlBranchWriter::writeInlineMember(const std::string& key, const TomlBranch& branch, bool& isFirst)
{
    text += !isFirst ? ", " : style.isPadded ? " " : "";
    isFirst = false;
    text += key + style.separator;
    writeInline(branch, true);
}

void TomlBranchWriter::writeInline(const TomlBranch& branch, bool isInTable)
{
    if (branch.value && branch.children.empty()) {
        const auto plain = spellTomlValue(*branch.value, {}, {style.place.lineEnd, false});
        if (!plain && error.empty())
            error = Reason::tr("in %1, TOML has no form for %2, and in an array or an inline table no "
                               "comment can tag its type",
                               {quoted(place), describeType(branch.value->type)});
        text += plain.value_or(std::string());
        return;
    }
    if (++depth > TomlReader::maximumDepth && error.empty())
        error = Reason::tr("more than %1 arrays and inline tables would lie within each other",
                           {std::to_string(TomlReader::maximumDepth)});
    bool isFirst = true;
    if (branch.isArray) {
        text += '[';
        for (const TomlBranch& element : branch.children) {
            text += isFirst ? "" : ", ";
            isFirst = false;
            writeInline(element, isInTable);
        }
        text += ']';
    } else {
        text += '{';
        if (branch.value)
            writeInlineMember(encodeTomlKey(tomlOwnValueKey), {{}, branch.value, {}, false}, isFirst);
        for (const TomlBranch& child : branch.children)
            writeInlineMember(encodeTomlKey(child.key), child, isFirst);
        text += isFirst || !style.isPadded ? "}" : " }";
    }
    --depth;
}

} // namespace Repository::Documents
