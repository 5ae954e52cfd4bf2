#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QModelIndex>
#include <QString>
#include <QStringList>

#include <memory>

class QAbstractItemModel;

namespace Utilities::ModelViews {

// What pages need to know of items of an attribute tree, and what they do to subtrees. GUI thread.
//
// Operations on subtrees work on the repository that was the process's when the object was made. Each is all
// or nothing and one step of undo; one that takes longer than a second shows its progress in a modal window,
// where all but deleting can be cancelled. They give false when nothing was done.
class VANTRY_HOST_EXPORT AttributeTreeViewModelUtils
{
public:
    AttributeTreeViewModelUtils();

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

    // Deletes the attribute and all below it; why it was refused is in the log.
    bool deleteAttributeTree(const QString& path) const;

    // Copies the attribute and all below it to a path that is not there yet; why it was refused is in the
    // log.
    bool copyAttribute(const QString& source, const QString& target) const;

    // Gives the attribute and all below it another path, which is not there yet, or that of an element of the
    // same array; why it was refused is in the log.
    bool moveAttribute(const QString& source, const QString& target) const;

    // Write the attribute and all below it into a file, with paths relative to the given one: as nested json,
    // or as lines "path = value". A failure leaves a file that was there as it was, and the error text says
    // why for the person.
    bool exportAttributeToJson(const QString& fileName, const QString& path, QString& errorText) const;
    bool exportAttributeToTxtFile(const QString& fileName, const QString& path, QString& errorText) const;

    // Creates the attributes of a json file below the path; those that are there already are written. On a
    // failure the error text names the file, and where it is not json the line, the column and the reason.
    bool importAttributeFromJson(const QString& fileName, const QString& path, QString& errorText) const;

    // The text without those of the given characters at its two ends.
    static QString TrimAttributeName(const QString& text, const QString& characters);

    // "read-only", "write-only" or "read-write"; any other text gives None.
    static FrameworkCore::AppConfig::AccessMode GetBackendAccessMode(const QString& text);

private:
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> attributes; // may be empty
};

} // namespace Utilities::ModelViews
