#include "repository/documents/common/NumberStyle.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

// As Vantry itself writes its value.
bool isOwnSpelling(std::string_view spelled)
{
    double number = 0;
    std::from_chars(spelled.data(), spelled.data() + spelled.size(), number);
    return toText({Type::Double, number}) == spelled;
}

bool isDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == npos;
}

} // namespace

std::optional<std::string> spellLike(double number, std::string_view former)
{
    const std::size_t mark = former.find_first_of("eE");
    if (mark == npos || mark == 0 || !std::isfinite(number))
        return std::nullopt;
    std::string_view digits = former.substr(mark + 1);
    const bool hasPlus = !digits.empty() && digits[0] == '+';
    if (hasPlus || (!digits.empty() && digits[0] == '-'))
        digits.remove_prefix(1);
    if (!isDigits(digits) || former.substr(0, mark).find_first_not_of("+-.0123456789") != npos ||
        isOwnSpelling(former))
        return std::nullopt;
    std::array<char, 64> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific);
    const std::string_view text(buffer.data(), std::size_t(written.ptr - buffer.data()));
    const std::size_t end = text.find('e');
    std::string spelled(text.substr(0, end));
    if (former.substr(0, mark).find('.') != npos && spelled.find('.') == std::string::npos)
        spelled += ".0";
    spelled += former[mark];
    std::string_view exponent = text.substr(end + 1);
    if (exponent[0] == '-' || hasPlus)
        spelled += exponent[0];
    exponent.remove_prefix(1);
    exponent.remove_prefix(std::min(exponent.find_first_not_of('0'), exponent.size() - 1));
    spelled.append(digits[0] == '0' && digits.size() > exponent.size() ? digits.size() - exponent.size() : 0,
                   '0');
    return spelled.append(exponent);
}

} // namespace Repository::Documents
