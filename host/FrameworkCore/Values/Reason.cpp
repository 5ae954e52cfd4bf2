#include "host/FrameworkCore/Values/Reason.h"

#include "host/FrameworkCore/Values/Text.h"

#include <cerrno>

namespace FrameworkCore::Values {

namespace {

Reason::Translator translate = nullptr;

} // namespace

std::string Reason::tr(const char* form, std::initializer_list<std::string_view> parts)
{
    const int systemError = errno; // which the caller may ask for after the text is made
    std::string text = filledText(translate ? translate(form) : form, {parts.begin(), parts.end()});
    errno = systemError;
    return text;
}

void Reason::translateBy(Translator translator)
{
    translate = translator;
}

} // namespace FrameworkCore::Values
