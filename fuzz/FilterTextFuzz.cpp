// FilterTextFuzz.cpp -- any lines as filters, a search and sort keys: the page does not depend on what a library keeps.
#include "PagePair.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto [filters, search, sort] = Fuzz::linesOf({reinterpret_cast<const char *>(data), size});
    Fuzz::checkPages({{Fuzz::here}, filters, 4, 1, search, sort});
    return 0;
}
