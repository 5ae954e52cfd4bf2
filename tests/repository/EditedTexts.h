#pragma once

#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/Formats.h"
#include "repository/merge/EditedDocument.h"

#include <QByteArray>
#include <QStringList>
#include <QtTest>

// Edits and merges of documents, as tests write them down.
namespace EditedTexts {

using Repository::EditedDocument;
using Repository::Documents::Document;
using Repository::Documents::Outcome;
using Texts = QStringList;

// "a.b = 5" sets or inserts, "- a.b" removes.
inline Outcome apply(EditedDocument& edited, const QString& line)
{
    return edited.edit([&line](Document& document) {
        if (line.startsWith(QLatin1String("- ")))
            return document.remove(line.mid(2).toStdString());
        const QStringList parts = line.split(QStringLiteral(" = "));
        const std::string path = parts.at(0).toStdString();
        const auto value = FrameworkCore::Values::plainValue(parts.at(1).toStdString());
        return document.contains(path) ? document.set(path, value) : document.insert(path, value);
    });
}

inline void applyAll(EditedDocument& edited, const Texts& lines)
{
    std::string lacking;
    edited.edit([](Document& document) { return document.beginRun(), Outcome(); });
    for (const QString& line : lines) {
        const Outcome outcome = apply(edited, line);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
    }
    QVERIFY(edited.edit([&](Document& document) { return document.endRun(lacking); }).ok());
}

// Empty on success.
inline QByteArray merge(EditedDocument& edited, const std::string& theirs)
{
    auto document = Repository::Documents::makeDocument(edited.getType());
    const Outcome outcome = document->parse(theirs);
    return QByteArray::fromStdString(outcome.ok() ? edited.merge(std::move(document), theirs)
                                                  : outcome.error);
}

inline Texts conflictsOf(const EditedDocument& edited)
{
    Texts paths;
    for (const EditedDocument::Conflict& conflict : edited.getConflicts())
        paths += QString::fromStdString(conflict.path);
    return paths;
}

// Of a test whose rows are texts: merges theirs into mine, both made from the base.
inline void mergeRow()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, base);
    QFETCH(QByteArray, mine);
    QFETCH(QByteArray, theirs);
    EditedDocument edited(type.toStdString());
    QVERIFY(edited.load(base.toStdString()).ok());
    QVERIFY(edited.replaceText(mine.toStdString()).ok());
    QCOMPARE(merge(edited, theirs.toStdString()), QByteArray());
    QTEST(QByteArray::fromStdString(edited.getText()), "merged");
}

} // namespace EditedTexts
