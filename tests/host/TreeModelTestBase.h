#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// Tests of the tree model, which all run on the fake repository and on the real one.
class TreeModelTestBase : public QObject
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

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;

private:
    QTemporaryDir folder;

private slots:
    void initTestCase_data();
    void init();
    void cleanup();
};
