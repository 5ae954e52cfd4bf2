#pragma once

// The units of files/ are part of libvantry_core, so that a process has them once.
#define VANTRY_FILES_EXPORT __attribute__((visibility("default")))
