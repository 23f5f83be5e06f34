// ToolQuery.h -- filters and orders of tools as people type them, in the form that the engine reads. Stateless.
#pragma once

#include <string>
#include <vector>

namespace Quillon {

/// The filters of a request from texts such as "diameter=6..12", "diameter=6mm..1/2in", "flutes>=3", "unit=mm" or
/// "type=drill|ball end mill":
///
///     lengths    with "mm" or "in", as 12, 0.5 or 1-1/2; without a unit in that of the other bound, else millimeters
///     numbers    = != < > <= >=, and with = ranges with both ends in it, of which one may be left out
///     texts      = and the exact text, or several with "|" between them; types by keyword or name
///
/// Quotes around a value are taken off. Throws UsageError for what cannot be read.
std::string filtersState(const std::vector<std::string> &filters);

/// The order of a request from texts such as "diameter" or "name:desc". Throws UsageError for what cannot be read.
std::string sortState(const std::vector<std::string> &sorts);

} // namespace Quillon
