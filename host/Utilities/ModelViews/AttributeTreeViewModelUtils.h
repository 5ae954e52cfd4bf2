#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/HostExport.h"

#include <QModelIndex>
#include <QString>
#include <QStringList>

class QAbstractItemModel;

namespace Utilities::ModelViews {

// What pages need to know of items of an attribute tree. GUI thread.
class VANTRY_HOST_EXPORT AttributeTreeViewModelUtils
{
public:
    // Full path of a tree item, its names from the top joined by "."; empty for an invalid index.
    QString retriveAttributePathFromIndex(const QModelIndex& index) const;

    // Display texts of the children of an item, in row order; the invalid index is the top.
    QStringList extractStringsFromModel(const QAbstractItemModel* model, const QModelIndex& parent) const;

    // Reads a text file in UTF-8, with either line end, into lines that end with "\n". False with a text for
    // the person when it cannot be read or is no such file; the content is then as it was.
    bool readTextFile(const QString& fileName, QString& content, QString& errorText) const;

    // Replaces the file, or creates it, so that a failure leaves the old one whole. False when it is not
    // written; why goes to the log.
    bool writeTxtFile(const QString& text, const QString& fileName) const;

    // The text without those of the given characters that stand at its two ends.
    static QString TrimAttributeName(const QString& text, const QString& characters);

    // "read-only", "write-only" or "read-write"; any other text gives None.
    static FrameworkCore::AppConfig::AccessMode GetBackendAccessMode(const QString& text);
};

} // namespace Utilities::ModelViews
