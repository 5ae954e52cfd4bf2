#pragma once

#include <QtGlobal>

// Marks what vantry_host shows to the libraries and programs that link it.
#ifdef VANTRY_HOST_LIBRARY
#define VANTRY_HOST_EXPORT Q_DECL_EXPORT
#else
#define VANTRY_HOST_EXPORT Q_DECL_IMPORT
#endif
