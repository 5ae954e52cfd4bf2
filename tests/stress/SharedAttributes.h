#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QRandomGenerator>
#include <QStringList>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

// Attributes in memory that all threads write, and what watches them: one that counts, one that follows the
// newest value, and one that calls back into the repository. Made and ended on one thread.
class SharedAttributes
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    static constexpr int count = 6;
    static QString pathOf(int attribute) { return QStringLiteral("shared.k%1").arg(attribute); }

    // What one thread writes. One thread.
    class Writer
    {
    public:
        Writer(std::shared_ptr<RepositoryInterface> repository, int threadNumber, QRandomGenerator& random);

        void step();
        const std::array<qlonglong, count>& getLast() const { return last; }
        const std::array<int, count>& getWrites() const { return writes; }

    private:
        const std::shared_ptr<RepositoryInterface> repository;
        QRandomGenerator& random;
        qlonglong value;
        std::array<qlonglong, count> last{}; // of each attribute; 0 before the first
        std::array<int, count> writes{};
    };

    explicit SharedAttributes(std::shared_ptr<RepositoryInterface> repository);

    // When all writers have ended: the faults that were found.
    QStringList finish(const std::vector<const Writer*>& writers);

private:
    struct Watched
    {
        std::atomic<int> calls{0};
        std::atomic<int> echoes{0};
        std::atomic<int> echoCalls{0};
        std::mutex mutex;
        qlonglong newest = 0; // guarded by mutex
    };

    void watch(int attribute);
    void callBack(int attribute);
    qlonglong read(int attribute) const;

    const std::shared_ptr<RepositoryInterface> repository;
    std::array<Watched, count> watched;
    std::vector<std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>> registrations;
};
