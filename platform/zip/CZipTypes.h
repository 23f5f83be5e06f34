// CZipTypes.h -- the texts and lists that the archive classes speak in.
#pragma once

#include <string>
#include <vector>

namespace Varn {

/// Names and paths: wide text with '/' between the parts.
using CZipString = std::wstring;

template <typename T>
using CZipArray = std::vector<T>;

} // namespace Varn
