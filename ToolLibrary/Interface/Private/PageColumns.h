// PageColumns.h -- what a library keeps of its tools so that pages of them are found fast: numbers, texts, types,
// orders.
//
// One thread at a time; ColumnedSource hands it out under a lock. It is made of the tools as they are, column by column
// when one is first asked for, and dropped when the library is written to.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSorter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"
#include "platform/nc/NCUnit.h"
#include "platform/nc/ToolGeometry.h"

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT PageColumns
{
public:
    using Row = std::uint32_t;               ///< the place of a tool in the library
    using Marks = std::vector<std::uint8_t>; ///< by row; 1 for a tool that is still in question

    struct Numbers {
        std::vector<double> values;
        std::vector<std::uint8_t> isPresent;
    };
    struct Texts {
        static constexpr std::int32_t none = -1;
        std::vector<std::int32_t> ids;
        std::map<std::string, std::int32_t, std::less<>> idOf;
    };

    /// \a source must outlive this object, give no null tool, and stay as it is.
    explicit PageColumns(const ToolSource &source);
    ~PageColumns();
    PageColumns(const PageColumns &) = delete;
    PageColumns &operator=(const PageColumns &) = delete;

    Row size() const { return m_size; }
    const std::vector<ToolGeometry::Type> &types();
    const std::vector<NCUnit::Unit> &units();

    /// By the key of a request, as ToolKeys::numberOf and ToolKeys::textOf.
    const Numbers &numbers(const std::string &key);
    const Texts &texts(const std::string &key);

    /// The text of a tool's GUID leads to its row.
    std::optional<Row> rowOf(const std::string &guid);

    /// Unmarks the tools in whose comment, product id, vendor and name \a needle, a normalised text, does not occur.
    void search(std::wstring_view needle, Marks &marks);

    /// All rows in the order of a request. Null when the order of some of them could be another one than among all: for
    /// values of two kinds, which cannot be compared, and names whose equal numbers are written differently.
    const std::vector<Row> *order(std::string_view sortState);

private:
    struct SearchTexts;
    struct KeptOrder {
        std::string key; ///< sort state and language
        std::optional<std::vector<Row>> rows;
    };

    template <typename Visit>
    void forEachTool(const Visit &visit);
    std::optional<std::vector<Row>> makeOrder(std::string_view sortState);

    const ToolSource &m_source;
    Row m_size;
    std::vector<ToolGeometry::Type> m_types;
    std::vector<NCUnit::Unit> m_units;
    std::map<std::string, Numbers> m_numbers;
    std::map<std::string, Texts> m_texts;
    std::map<std::string, Row> m_rowOfGuid;
    std::unique_ptr<SearchTexts> m_searchTexts;
    std::list<KeptOrder> m_orders; ///< those used last in front
};

} // namespace Varn::ToolLibraries
