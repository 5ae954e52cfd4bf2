#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <initializer_list>
#include <string>
#include <string_view>

// Tells lupdate under which name the texts of a class that has its own tr are looked up.
#define VANTRY_TEXTS_OF(name)

namespace FrameworkCore::Values {

// What people are told by the code that is made without Qt, such as why it refused something: in the language
// that the program shows, and in that of the sources where nobody translates. Any thread.
class VANTRY_CORE_EXPORT Reason
{
    VANTRY_TEXTS_OF(FrameworkCore::Values)

public:
    using Translator = std::string (*)(const char* form);

    // The form in the person's language, with the parts in place of its "%1", "%2" and so on. Keeps errno.
    static std::string tr(const char* form, std::initializer_list<std::string_view> parts = {});

    // Before any other thread calls tr.
    static void translateBy(Translator translator);
};

} // namespace FrameworkCore::Values
