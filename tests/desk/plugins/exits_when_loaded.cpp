#include <unistd.h>

namespace {

[[maybe_unused]] const int fault = (_exit(0), 0);

} // namespace
