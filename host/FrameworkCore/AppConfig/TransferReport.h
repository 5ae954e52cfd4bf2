#pragma once

#include <atomic>

namespace FrameworkCore::AppConfig::Interfaces {

// How a transfer goes. Whoever started it may look at it and cancel it from any thread while it runs; the
// operation only stores numbers here, so that it never waits for those who look. One report serves one
// operation.
class TransferReport
{
public:
    // Asks the operation to end and to change nothing. What has come too far is finished all the same; the
    // status tells.
    void cancel() { cancelled = true; }
    bool isCancelled() const { return cancelled; }

    // How many attributes of how many are done; a total of 0 while that is not known.
    int getDone() const { return done; }
    int getTotal() const { return total; }

    void setTotal(int count) { total = count; }
    void setDone(int count) { done = count; }

    // Whether something of an exported text comes from a file that not everybody may read, so that neither
    // may everybody read the text. Read once the operation has ended.
    bool isPrivate() const { return hasPrivateSource; }
    void setPrivate() { hasPrivateSource = true; }

    // How many comments of the source an exported text has not, since its format has no place for them.
    int getCommentsLeftOut() const { return commentsLeftOut; }
    void setCommentsLeftOut(int count) { commentsLeftOut = count; }

    // Whether what was written lacks tags of the source, as "!secret" in yaml, which give values a meaning of
    // which their types tell nothing.
    bool areTagsLeftOut() const { return tagsLeftOut; }
    void setTagsLeftOut() { tagsLeftOut = true; }

private:
    std::atomic<bool> cancelled{false};
    std::atomic<int> done{0};
    std::atomic<int> total{0};
    bool hasPrivateSource = false;
    int commentsLeftOut = 0;
    bool tagsLeftOut = false;
};

} // namespace FrameworkCore::AppConfig::Interfaces
