// SortTextFuzz.cpp -- any lines as sort keys, filters and a search: the page does not depend on what a library keeps.
#include "PagePair.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto [sort, filters, search] = Fuzz::linesOf({reinterpret_cast<const char *>(data), size});
    Fuzz::checkPages({{Fuzz::here}, filters, 100, 0, search, sort});
    return 0;
}
