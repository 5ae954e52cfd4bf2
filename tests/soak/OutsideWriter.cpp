#include "tests/soak/OutsideWriter.h"

#include "tests/soak/SoakFiles.h"
#include "tests/support/TestFiles.h"

#include <QFile>

#include <chrono>
#include <cstdio>

namespace Soak {

OutsideWriter::OutsideWriter(QStringList changedFiles, double writesPerSecond, unsigned seed)
    : files(std::move(changedFiles)), perSecond(writesPerSecond), random(seed), thread([this] { run(); })
{
}

OutsideWriter::~OutsideWriter()
{
    isOver = true;
    thread.join();
}

void OutsideWriter::run()
{
    const std::chrono::duration<double> pause(1 / perSecond);
    while (!isOver) {
        write(files[int(random() % unsigned(files.size()))]);
        ++writes;
        std::this_thread::sleep_for(pause);
    }
}

void OutsideWriter::write(const QString& file)
{
    const QByteArray content = SoakFiles::content(file, unsigned(random() % 1000));
    if (random() % 2 == 0) {
        TestSupport::writeFile(file, content);
        return;
    }
    const QString other = TestSupport::writeFile(file + QStringLiteral(".outside"), content);
    if (std::rename(QFile::encodeName(other).constData(), QFile::encodeName(file).constData()) != 0)
        qFatal("%s was not replaced", qPrintable(file));
}

} // namespace Soak
