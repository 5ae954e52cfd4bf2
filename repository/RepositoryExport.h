#pragma once

#include <QtGlobal>

// Marks what the library of the repository shows to the programs that link it.
#ifdef VANTRY_REPOSITORY_ENTRANCE_LIBRARY
#define VANTRY_REPOSITORY_EXPORT Q_DECL_EXPORT
#else
#define VANTRY_REPOSITORY_EXPORT Q_DECL_IMPORT
#endif
