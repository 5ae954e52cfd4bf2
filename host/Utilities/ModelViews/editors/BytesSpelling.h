#pragma once

#include <QByteArray>
#include <QString>

namespace Utilities::ModelViews::Widgets {

enum class BytesSpelling { Hexadecimal, Base64, Text };

// The bytes that a text spells; the fault in words, else empty. Blanks and line ends between the signs of the
// first two spellings do not count. Any thread.
QByteArray readBytes(const QString& text, BytesSpelling spelling, QString& fault);

// The text that spells the bytes. Any thread.
QString spellBytes(const QByteArray& bytes, BytesSpelling spelling);

} // namespace Utilities::ModelViews::Widgets
