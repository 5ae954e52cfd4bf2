#pragma once

namespace Repository {

// Whether this is the thread that draws the windows of the program, which must not wait for a network.
bool isWindowThread();

} // namespace Repository
