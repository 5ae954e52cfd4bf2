#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace Repository::Documents {

// The entities that the doctype of a file declares with a text of their own, and the five of xml itself; also
// which attributes it declares as lists of words.
class XmlEntities
{
public:
    // The text has its character references resolved. The first declaration of a name counts.
    void declare(std::string name, std::string text) { texts.emplace(std::move(name), std::move(text)); }

    // Attributes that the doctype declares as something else than mere text, by their names and their
    // element's.
    void declareTokens(const std::string& element, const std::string& attribute)
    {
        tokens.insert(element + ' ' + attribute);
    }
    bool hasTokens() const { return !tokens.empty(); }
    bool isOfTokens(std::string_view element, std::string_view attribute) const
    {
        return hasTokens() && tokens.count(std::string(element) + ' ' + std::string(attribute)) > 0;
    }

    // The text of a reference, without "&" and ";". Nothing for one that is external, unknown or more than
    // text.
    std::optional<std::string> expand(std::string_view reference) const;

private:
    std::unordered_map<std::string, std::string> texts;
    std::unordered_set<std::string> tokens;
};

} // namespace Repository::Documents
