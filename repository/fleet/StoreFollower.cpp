#include "repository/fleet/StoreFollower.h"

#include "host/FrameworkCore/Values/Reason.h"
#include "repository/fleet/StorePresence.h"

#include <algorithm>
#include <future>
#include <random>

namespace Repository {

using namespace std::chrono_literals;
using FrameworkCore::Values::Reason;
using News = StoreApplier::News;
using Status = StoreResult::Status;

namespace {

constexpr std::int64_t firstPage = 1000; // entries, whose size is not known yet
constexpr std::int64_t largestPage = 50000;
constexpr std::size_t pageBytes = std::size_t(4) << 20;
constexpr std::int64_t growth = 4; // at most, from one page to the next

constexpr auto shortestPause = 50ms; // before the next attempt, doubled each time
constexpr auto longestPause = 2000ms;

constexpr auto askingAfter = 10s; // without a sign of life
constexpr auto leavingAfter = 30s;

// Entries that make some megabytes. Few pages are better: for each, the server counts all that comes after
// it.
std::int64_t sizeAfter(const StorePage& page)
{
    std::size_t bytes = 0;
    for (const StoreEntry& entry : page.entries)
        bytes += entry.key.size() + entry.value.size();
    const auto count = std::int64_t(page.entries.size());
    const std::int64_t fitting = std::int64_t(pageBytes) * count / std::int64_t(bytes + 1);
    return std::clamp<std::int64_t>(std::min(fitting, growth * count), 1, largestPage);
}

// So that not all programs that have lost a store come back to it at the same moment.
std::chrono::milliseconds varied(std::chrono::milliseconds pause)
{
    thread_local std::minstd_rand numbers{std::random_device()()};
    return pause / 2 + std::chrono::milliseconds(numbers() % std::uint_fast32_t(pause.count()));
}

} // namespace

StoreFollower::StoreFollower(StoreContext& storeContext, StoreApplier& storeApplier)
    : context(storeContext), applier(storeApplier)
{
}

void StoreFollower::run()
{
    auto pause = std::chrono::milliseconds(shortestPause);
    bool isOver = false;
    while (!isOver) {
        const bool wasLoaded = isLoaded;
        const auto begin = Clock::now();
        if (context.wantsReload.exchange(false))
            isLoaded = false;
        const StoreResult result = isLoaded ? follow() : readPages();
        if (result.ok()) {
            pause = shortestPause;
            isOver = context.pause(0ms);
            continue;
        }
        if (result.status == Status::Compacted)
            isLoaded = false;
        fail(result);
        const bool wasLong = wasLoaded && Clock::now() - begin > longestPause;
        pause = wasLong ? std::chrono::milliseconds(shortestPause)
                        : std::min<std::chrono::milliseconds>(pause * 2, longestPause);
        isOver = context.pause(varied(pause));
    }
}

void StoreFollower::fail(const StoreResult& result)
{
    bool isOther = false;
    {
        const std::lock_guard lock(context.state->mutex);
        ++context.state->failedAttempts;
        isOther = context.state->close(context.state->news, result);
    }
    if (result.status == Status::Unavailable)
        context.transport->rotate();
    if (isOther)
        applier.push({});
}

void StoreFollower::setOpen()
{
    bool isOther = false;
    {
        const std::lock_guard lock(context.state->mutex);
        isOther = context.state->open(context.state->news);
    }
    if (isOther)
        applier.push({});
}

// All of it as it was at the revision of the first page. The next page is on its way while one is handed on.
StoreResult StoreFollower::readPages()
{
    StoreRange range{context.prefix, context.keysEnd(), firstPage, 0, 0, false};
    const auto read = [this](const StoreRange& wanted) {
        auto page = std::make_unique<StorePage>();
        StoreResult result = context.transport->read(wanted, *page);
        return std::pair(std::move(result), std::move(page));
    };
    auto [result, page] = read(range);
    if (!result.ok())
        return result;
    range.revision = page->revision;
    {
        const std::lock_guard lock(context.state->mutex);
        context.state->toLoad = int(page->count);
    }
    context.unreadable = 0;
    meta.clear();
    News begin;
    begin.kind = News::Kind::Begin;
    applier.push(std::move(begin));
    while (page->hasMore && !page->entries.empty()) {
        range.begin = page->entries.back().key + '\0';
        range.limit = sizeAfter(*page);
        auto nextPage = std::async(read, range); // or, where there is no thread, when it is asked for
        pushPage(*page);
        std::tie(result, page) = nextPage.get();
        if (!result.ok())
            return result;
    }
    pushPage(*page);
    if (!meta.empty() && !StoreContext::isKnownFormat(meta))
        return {Status::Refused, Reason::tr("the store was written by a newer version of this program")};
    News end;
    end.kind = News::Kind::Loaded;
    end.revision = range.revision;
    applier.push(std::move(end));
    next = range.revision + 1;
    isLoaded = true;
    return {};
}

// Whether the store is the one that was loaded: one that was emptied, or restored, may have come as far as
// before.
StoreResult StoreFollower::checkIdentity()
{
    StorePage page;
    const StoreResult result = context.transport->read({context.metaKey(), {}, 1, 0, 0, false}, page);
    if (!result.ok())
        return result;
    const std::string found = page.entries.empty() ? std::string() : page.entries.front().value;
    if (found.empty() && meta.empty()) { // whoever comes first says which store it is
        StoreReply reply;
        const std::string fresh = StoreContext::newMeta();
        if (context.transport->write({{context.metaKey(), fresh, 0, 0}}, reply).ok() && reply.isWritten)
            meta = fresh;
        return result;
    }
    return found == meta || meta.empty()
               ? result
               : StoreResult{Status::Compacted, Reason::tr("the store is another one than before")};
}

void StoreFollower::pushPage(const StorePage& page)
{
    News news;
    news.kind = News::Kind::Page;
    news.arrivals.reserve(page.entries.size());
    for (const StoreEntry& entry : page.entries) {
        if (auto arrival = context.readAttribute(entry.key, entry.value, entry.revision))
            news.arrivals.push_back(*std::move(arrival));
        else if (const auto session = context.readSession(entry.key))
            news.users.insert(QString::fromStdString(*session), StorePresence::userIn(entry.value));
        else if (entry.key == context.metaKey())
            meta = entry.value;
        else
            ++context.unreadable;
    }
    applier.push(std::move(news));
}

StoreResult StoreFollower::follow()
{
    const StoreResult identity = checkIdentity();
    if (!identity.ok())
        return identity;
    auto begun = context.transport->watch(context.prefix, context.keysEnd(), next);
    StoreWatch* const current = begun.get();
    {
        const std::lock_guard lock(mutex);
        watch = std::move(begun);
        heard = asked = Clock::now();
    }
    StoreEvents events;
    StoreResult result;
    while (result.ok() && current->read(events, result)) {
        {
            const std::lock_guard lock(mutex);
            heard = Clock::now();
        }
        result = takeEvents(events);
        events = {};
    }
    const std::lock_guard lock(mutex);
    watch.reset();
    return result.ok() ? StoreResult{Status::Unavailable, Reason::tr("the store has ended the connection")}
                       : result;
}

StoreResult StoreFollower::takeEvents(StoreEvents& events)
{
    if (events.isBegin) {
        if (events.revision < next - 1)
            return {Status::Compacted, Reason::tr("the store is another one than before")};
        setOpen();
    }
    std::vector<StoreEvents::Event>& all = events.events;
    for (std::size_t begin = 0; begin < all.size();) {
        News news;
        news.kind = News::Kind::Events;
        news.revision = all[begin].revision;
        for (; begin < all.size() && all[begin].revision == news.revision; ++begin) {
            const StoreEvents::Event& event = all[begin];
            if (auto arrival = context.readAttribute(event.key, event.value, event.revision))
                news.arrivals.push_back(*std::move(arrival));
            else if (const auto session = context.readSession(event.key))
                news.users.insert(QString::fromStdString(*session),
                                  event.value ? StorePresence::userIn(*event.value) : QString());
            else if (event.key == context.metaKey())
                meta = event.value.value_or(std::string());
        }
        if (news.revision >= next)
            applier.push(std::move(news));
    }
    if (!all.empty())
        next = std::max(next, all.back().revision + 1);
    return {};
}

void StoreFollower::checkLife()
{
    const std::lock_guard lock(mutex);
    const auto now = Clock::now();
    if (!watch)
        return;
    if (now - heard > leavingAfter) {
        watch->cancel();
    } else if (now - std::max(heard, asked) > askingAfter) {
        asked = now;
        watch->ask();
    }
}

void StoreFollower::interrupt()
{
    const std::lock_guard lock(mutex);
    if (watch)
        watch->cancel();
}

} // namespace Repository
