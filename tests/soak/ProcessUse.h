#pragma once

#include <QString>

namespace Soak {

// What this process takes from the system at one moment.
struct ProcessUse
{
    double resident = 0;  // MB, without what is shared with others
    double heapInUse = 0; // MB that the program has not given back to the allocator
    double heapHeld = 0;  // MB that the allocator holds
    int handles = 0;      // open files
    int watches = 0;      // of inotify
    int threads = 0;

    static ProcessUse now();
};

} // namespace Soak
