// VarnPlatformExport.h -- marks what libVarnPlatform offers to others.
#pragma once

#include <QtGlobal>

#if defined(VARN_PLATFORM_BUILD)
#define VARN_PLATFORM_EXPORT Q_DECL_EXPORT
#else
#define VARN_PLATFORM_EXPORT Q_DECL_IMPORT
#endif
