#pragma once

#include <QMimeData>
#include <QString>
#include <QStringList>

#include <memory>

namespace Utilities::ModelViews {

// Paths of attributes as they are dragged: a path a line, in a type of their own and as plain text.

QString attributePathsMimeType();
QStringList attributePathsMimeTypes(); // both

std::unique_ptr<QMimeData> makeAttributePathsMimeData(const QStringList& paths);

// The paths in what is dropped, each once. Of plain text, from whatever program, the lines that are not
// blank, without blanks around them.
QStringList attributePathsFrom(const QMimeData& data);

} // namespace Utilities::ModelViews
