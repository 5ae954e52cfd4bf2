#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <stdexcept>

namespace Repository {

// Counts the characters of the paths that are made of a document. Every entry has one of its own, so that a
// file in which a few long names lie deep in each other could take thousands of times its size: that is ended
// like memory that is refused.
class PathBudget
{
public:
    void spend(std::size_t pathSize)
    {
        constexpr std::size_t always = std::size_t(64) << 20;
        constexpr std::size_t longOnAverage = 2048;
        characters += pathSize;
        ++paths;
        if (characters > always && characters / paths > longOnAverage)
            throw std::length_error("paths");
    }

    // Of all paths of a document.
    static void check(const Documents::Document& document)
    {
        PathBudget budget;
        document.visit([&budget](const Documents::Entry& entry) { budget.spend(entry.path.size()); });
    }

private:
    std::size_t characters = 0;
    std::size_t paths = 0;
};

} // namespace Repository
