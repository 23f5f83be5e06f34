// VendorLibraries.h -- the libraries that tool makers offer. Any thread.
#pragma once

#include <QString>

#include <map>

namespace Varn::ToolLibraries {

/// Display name to path, with '/' between folders; the last part names the library's file, without extension.
const std::map<QString, QString> &vendorLibraries();

} // namespace Varn::ToolLibraries
