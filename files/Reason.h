#pragma once

#include "host/FrameworkCore/Values/Reason.h"

// How texts for people are made here, by its short name.
namespace Files {

using FrameworkCore::Values::Reason;

} // namespace Files
