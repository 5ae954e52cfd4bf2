#pragma once

#include "cli/Invocation.h"
#include "cli/Source.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QVariant>

#include <utility>
#include <vector>

namespace CommandLine {

// The results of a command, in the shape that its options ask for: a line each, or an object of json each,
// all in one array. With --null each ends with NUL instead, values are as they are, and no array encloses
// them. One thread at a time.
class Records
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using Fields = std::vector<std::pair<const char*, QVariant>>; // of an object

    enum class Ending {
        Array,
        Open // objects a line each, since they come as they happen
    };

    explicit Records(const Invocation& invocation, Ending ending = Ending::Array);
    ~Records(); // ends the array
    Q_DISABLE_COPY(Records)

    bool areJson() const { return isJson; }

    // A value that shares its record with other things.
    QString valueText(const QVariant& value) const;

    void add(const QString& text);
    void add(const Fields& fields) { addJson(objectOf(fields)); }
    void addJson(const QString& json);

    // A node of the file by its path, in json with its type and value.
    void addNode(RepositoryInterface& repository, const Source& source, const QString& fullPath);

    static QString objectOf(const Fields& fields);

    // Its type and value, as far as it has them and they may be read.
    static void appendValue(Fields& fields, RepositoryInterface& repository, const QString& fullPath);

private:
    const bool isJson;
    const bool isNull; // its end
    const bool isArray;
    bool isFirst = true;
};

} // namespace CommandLine
