#pragma once

#include <QStringList>

#include <atomic>
#include <random>
#include <thread>

namespace Soak {

// Another program that changes files one after the other, so many a second, some by replacing them and some
// by writing over them. It works on a thread of its own until it goes.
class OutsideWriter
{
public:
    OutsideWriter(QStringList files, double writesPerSecond, unsigned seed);
    ~OutsideWriter();
    OutsideWriter(const OutsideWriter&) = delete;
    OutsideWriter& operator=(const OutsideWriter&) = delete;

    int getWrites() const { return writes; }

private:
    void run();
    void write(const QString& file);

    const QStringList files;
    const double perSecond;
    std::mt19937 random;
    std::atomic<int> writes{0};
    std::atomic<bool> isOver{false};
    std::thread thread;
};

} // namespace Soak
