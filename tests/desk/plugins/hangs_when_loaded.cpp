#include <unistd.h>

namespace {

[[maybe_unused]] const int fault = pause();

} // namespace
