#include "ToolLibrary/Interface/Private/PageColumns.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::size_t mostOrders = 8;
constexpr char separator = '\n'; // white space, so neither a normalised text nor a needle has it

/// Names and the names of types are in the language of the moment.
std::string languageKey()
{
    return LocaleRegistry::country();
}

} // namespace

/// The normalised texts of all tools, one behind the other, each with a separator behind it.
struct PageColumns::SearchTexts {
    std::string language;
    std::string text;
    std::vector<std::uint64_t> ends; ///< by row: where its texts end
    std::vector<std::uint8_t> hasText;
};

PageColumns::PageColumns(const ToolSource &source) : m_source(source), m_size(source.numberOfTools()) {}

PageColumns::~PageColumns() = default;

template <typename Visit>
void PageColumns::forEachTool(const Visit &visit)
{
    Row row = 0;
    const auto end = m_source.end();
    for (auto at = m_source.begin(); !(at == end); ++at)
        visit(row++, IndexedTool(*at));
}

const std::vector<ToolGeometry::Type> &PageColumns::types()
{
    if (m_types.size() != m_size) {
        m_types.resize(m_size);
        forEachTool([this](Row row, const IndexedTool &tool) { m_types[row] = tool.getType(); });
    }
    return m_types;
}

const std::vector<NCUnit::Unit> &PageColumns::units()
{
    if (m_units.size() != m_size) {
        m_units.resize(m_size);
        forEachTool([this](Row row, const IndexedTool &tool) { m_units[row] = tool.getUnit(); });
    }
    return m_units;
}

const PageColumns::Numbers &PageColumns::numbers(const std::string &key)
{
    const auto [column, isNew] = m_numbers.try_emplace(key);
    Numbers &numbers = column->second;
    if (isNew) {
        numbers.values.resize(m_size);
        numbers.isPresent.resize(m_size);
        forEachTool([&](Row row, const IndexedTool &tool) {
            const std::optional<double> value = ToolKeys::numberOf(tool, key);
            numbers.values[row] = value.value_or(0);
            numbers.isPresent[row] = value.has_value();
        });
    }
    return numbers;
}

const PageColumns::Texts &PageColumns::texts(const std::string &key)
{
    const std::string columnKey = key == ToolKeys::name ? key + languageKey() : key;
    const auto [column, isNew] = m_texts.try_emplace(columnKey);
    Texts &texts = column->second;
    if (isNew) {
        texts.ids.resize(m_size, Texts::none);
        forEachTool([&](Row row, const IndexedTool &tool) {
            if (std::optional<std::string> text = ToolKeys::textOf(tool, key)) {
                const auto next = static_cast<std::int32_t>(texts.idOf.size());
                texts.ids[row] = texts.idOf.try_emplace(std::move(*text), next).first->second;
            }
        });
    }
    return texts;
}

std::optional<PageColumns::Row> PageColumns::rowOf(const std::string &guid)
{
    if (m_rowOfGuid.empty())
        forEachTool([this](Row row, const IndexedTool &tool) {
            m_rowOfGuid.emplace(tool.getTool().getToolId().guid().asString(), row);
        });
    const auto found = m_rowOfGuid.find(guid);
    return found == m_rowOfGuid.end() ? std::nullopt : std::optional(found->second);
}

void PageColumns::search(std::wstring_view needle, Marks &marks)
{
    const std::string language = languageKey();
    if (!m_searchTexts || m_searchTexts->language != language) {
        auto texts = std::make_unique<SearchTexts>();
        texts->language = language;
        texts->ends.reserve(m_size);
        texts->hasText.resize(m_size);
        forEachTool([&](Row row, const IndexedTool &tool) {
            for (const std::wstring &text :
                 {tool.getComment(), tool.getProductId(), tool.getVendor(), tool.getName()}) {
                if (text.empty())
                    continue;
                texts->hasText[row] = 1;
                texts->text += Messages::fromWideUnicodeToUTF8(SearchText::normalised(text));
                texts->text += separator;
            }
            texts->ends.push_back(texts->text.size());
        });
        m_searchTexts = std::move(texts);
    }
    if (needle.empty()) {
        for (Row row = 0; row < m_size; ++row)
            marks[row] &= m_searchTexts->hasText[row];
        return;
    }
    const std::string bytes = Messages::fromWideUnicodeToUTF8(needle);
    const std::string_view text = m_searchTexts->text;
    Row row = 0;
    std::size_t at = 0;
    while (row < m_size) {
        at = text.find(bytes, at);
        const auto &ends = m_searchTexts->ends;
        const auto hit = at == std::string_view::npos
                             ? m_size
                             : static_cast<Row>(std::upper_bound(ends.begin() + row, ends.end(), at) - ends.begin());
        std::fill(marks.begin() + row, marks.begin() + hit, std::uint8_t{0});
        if (hit == m_size)
            return;
        at = ends[hit]; // the next tool
        row = hit + 1;
    }
}

const std::vector<PageColumns::Row> *PageColumns::order(std::string_view sortState)
{
    const std::string key = std::string(sortState) + separator + languageKey();
    const auto kept = std::ranges::find(m_orders, key, &KeptOrder::key);
    if (kept != m_orders.end()) {
        m_orders.splice(m_orders.begin(), m_orders, kept);
    } else {
        m_orders.push_front({key, makeOrder(sortState)});
        if (m_orders.size() > mostOrders)
            m_orders.pop_back();
    }
    const std::optional<std::vector<Row>> &rows = m_orders.front().rows;
    return rows ? &*rows : nullptr;
}

std::optional<std::vector<PageColumns::Row>> PageColumns::makeOrder(std::string_view sortState)
{
    struct Entry {
        std::unique_ptr<IndexedTool> tool;
        Row row;
    };
    const ToolSorter::Order before = ToolSorter::createSortFunction(sortState);
    std::vector<Entry> entries;
    entries.reserve(m_size);
    Row row = 0;
    const auto end = m_source.end();
    for (auto at = m_source.begin(); !(at == end); ++at)
        entries.push_back({std::make_unique<IndexedTool>(*at), row++});
    if (before.looksAtNames()) {
        std::vector<const std::wstring *> names;
        names.reserve(m_size);
        for (const Entry &entry : entries)
            names.push_back(&entry.tool->getName());
        if (!ToolSorter::isConsistent(std::move(names)))
            return std::nullopt;
    }
    try {
        std::ranges::stable_sort(entries, [&](const Entry &a, const Entry &b) { return before(a.tool, b.tool); });
    } catch (const std::runtime_error &) {
        return std::nullopt;
    }
    std::vector<Row> rows;
    rows.reserve(m_size);
    std::ranges::transform(entries, std::back_inserter(rows), &Entry::row);
    return rows;
}

} // namespace Varn::ToolLibraries
