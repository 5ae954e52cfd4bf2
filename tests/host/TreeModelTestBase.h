#pragma once

#include "tests/support/BothRepositories.h"

#include <QStringList>
#include <QTemporaryDir>

// Tests of the models of attributes.
class TreeModelTestBase : public TestSupport::BothRepositories
{
    Q_OBJECT

protected:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;

    static QString text(const char* latin1) { return QString::fromLatin1(latin1); }

    void create(const QString& path, const QVariant& value, AccessMode access = AccessMode::ReadWrite) const;
    void remove(const QString& path) const;
    bool mount(const QString& name) const; // a backend whose file is not there yet

    // What a model shows that has just read everything.
    static QStringList freshText(const QString& searchPath, int depth = -1);

private:
    QTemporaryDir folder;
};
