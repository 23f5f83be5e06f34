// NaturalOrder.h -- the order of names in which T9 comes before T10. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <compare>
#include <cstdint>
#include <locale>
#include <string>
#include <vector>

namespace Varn::ToolLibraries {

/// Runs of digits compare as numbers, everything else character by character with a locale's collation, until one of
/// the texts is used up.
class TOOL_LIBRARY_EXPORT NaturalOrder
{
public:
    static std::partial_ordering compare(const std::wstring &a, const std::wstring &b, const std::locale &locale);

    /// Names as the sorter has them, in the "C" locale: the natural order, and the whole texts where that is
    /// equivalent. It is not transitive where equal numbers are written differently: T2, T02b, T2a.
    static std::partial_ordering compareNames(const std::wstring &a, const std::wstring &b);

    /// A strict order of all texts, for whatever sorts. It is that of compareNames among names that are consistent.
    static bool comesBefore(const std::wstring &a, const std::wstring &b);

    /// The beginning of a name in a form that is compared at once.
    struct Key {
        std::uint64_t high;
        std::uint64_t low;

        friend auto operator<=>(const Key &, const Key &) = default;
    };

    /// Of two names with different keys that with the lesser one comes before the other.
    static Key keyOf(const std::wstring &name);

    /// Whether compareNames() is transitive among these names, which are in the order of comesBefore(): then some of
    /// them stand in the same order as they do among all. It is not where a name goes on as another one does, but
    /// writes a number differently: T2, T02b, T2a.
    static bool isConsistent(const std::vector<const std::wstring *> &names);

    /// How two names stand to each other of which the second follows in the order of comesBefore().
    enum class Step {
        Apart,   ///< the natural order decides within both, where they read the same up to there
        GoesOn,  ///< the second begins with the first
        Respelt, ///< neither: some number is written in two ways, and the names before them must be looked at
        Broken,  ///< in the natural order the second goes on as the first does, but it does not begin with it
    };
    static Step stepBetween(const std::wstring &first, const std::wstring &second);

    NaturalOrder() = delete;
};

} // namespace Varn::ToolLibraries
