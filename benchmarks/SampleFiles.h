#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <map>

// Configuration files such as programs write them: sections of a hundred keys, three levels deep, with texts,
// integers, switches, real numbers, addresses and folders, and a comment for each section where the format
// has any. The same keys and values in every format.
class SampleFiles
{
public:
    static SampleFiles& instance();

    // The text of the file with that many keys. The formats are json, ini, xml, txt, toml and yaml, and of
    // the last two also toml-flat and yaml-flat, where all keys lie at the root.
    const QByteArray& text(const QString& format, int keyCount);

    // A file with that text, beside the program: a temporary folder may lie in memory, where saving is free.
    QString file(const QString& format, int keyCount);

    // Another name for that file, for readers that remember what they have read under one name.
    QString alias(const QString& format, int keyCount);

    // The name of a file of that folder that is not there.
    QString freshName();

private:
    SampleFiles();

    QTemporaryDir folder;
    std::map<std::pair<QString, int>, QByteArray> texts;
    int names = 0;
};

// The path, below the root of its document, of the key of that number.
QString samplePath(const QString& format, int key);

// Has a row work on a file of a hundred thousand keys.
inline void sampleSize(benchmark::internal::Benchmark* row)
{
    row->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
}
