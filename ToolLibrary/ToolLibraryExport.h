// ToolLibraryExport.h -- marks what libToolLibrary offers to others.
#pragma once

#include <QtGlobal>

#if defined(TOOL_LIBRARY_BUILD)
#define TOOL_LIBRARY_EXPORT Q_DECL_EXPORT
#else
#define TOOL_LIBRARY_EXPORT Q_DECL_IMPORT
#endif
