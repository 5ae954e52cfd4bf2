#include "host/Utilities/ModelViews/ReadableName.h"

namespace Utilities::ModelViews {

// What is encoded stays so where it could not be seen, or would not be what it seems.
QString decodedName(const QString& name)
{
    constexpr int hexadecimal = 16;
    QString decoded;
    for (int at = 0; at < name.size(); ++at) {
        const int code =
            name[at] == QLatin1Char('%') ? name.midRef(at + 1, 2).toInt(nullptr, hexadecimal) : 0;
        const bool isVisible = code > 0x20 && code < 0x7F;
        decoded += isVisible ? QChar(code) : name[at];
        at += isVisible ? 2 : 0;
    }
    return decoded;
}

} // namespace Utilities::ModelViews
