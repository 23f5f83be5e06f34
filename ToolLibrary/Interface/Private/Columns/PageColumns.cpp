#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"

#include "ToolLibrary/Interface/Private/Columns/ColumnedSource.h"
#include "ToolLibrary/Interface/Private/Columns/RowUpkeep.h"
#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "ToolLibrary/Interface/Private/ToolNameGenerator.h"
#include "platform/core/ToolSpecification.h"
#include "platform/utils/LocaleRegistry.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::size_t mostNotes = 64;   // of writes, each of which costs a pass over every order
constexpr std::size_t mostColumns = 64; // of each kind: keys are texts that anybody may think of

/// Makes room for one more column.
template <typename Columns>
void makeRoom(Columns &columns)
{
    if (columns.size() >= mostColumns)
        columns.clear();
}

PageColumns::Basics basicsOf(const IndexedTool &tool)
{
    return {tool.getType(), tool.getUnit(), tool.getToolId().guid()};
}

void setNumber(PageColumns::Numbers &numbers, ToolRow row, std::optional<double> value)
{
    numbers.values[row] = value.value_or(0);
    numbers.isPresent[row] = value.has_value();
}

/// ToolRows that were taken out one after the other, each numbered as at its time, by their numbers before the first of
/// them; ascending.
ToolRows asOfOneTime(const ToolRows &removed)
{
    ToolRows rows; // ascending
    for (ToolRow row : removed) {
        auto at = rows.begin();
        for (; at != rows.end() && *at <= row; ++at)
            ++row;
        rows.insert(at, row);
    }
    return rows;
}

} // namespace

PageColumns::PageColumns(const ColumnedSource &source)
    : m_source(source), m_size(source.numberOfRows()), m_language(LocaleRegistry::revision())
{
}

IndexedTool PageColumns::toolOf(ToolRow row) const
{
    return IndexedTool(m_source.toolOfRow(row));
}

/// \a visit(row, tool) in two threads, each with rows of its own.
template <typename Visit>
void PageColumns::overTools(const Visit &visit) const
{
    const auto over = [&](ToolRow begin, ToolRow end) {
        for (ToolRow row = begin; row < end; ++row)
            visit(row, toolOf(row));
    };
    sideBySide(
        m_size, [&] { over(0, m_size / 2); }, [&] { over(m_size / 2, m_size); });
}

const std::vector<PageColumns::Basics> &PageColumns::basics()
{
    if (m_basics.size() != m_size) {
        std::vector<Basics> basics(m_size);
        overTools([&](ToolRow row, const IndexedTool &tool) { basics[row] = basicsOf(tool); });
        m_basics = std::move(basics);
    }
    return m_basics;
}

const PageColumns::Numbers &PageColumns::numbers(const std::string &key)
{
    if (const auto found = m_numbers.find(key); found != m_numbers.end())
        return found->second;
    Numbers numbers{std::vector<double>(m_size), std::vector<std::uint8_t>(m_size)};
    overTools([&](ToolRow row, const IndexedTool &tool) { setNumber(numbers, row, ToolKeys::numberOf(tool, key)); });
    makeRoom(m_numbers);
    return m_numbers.try_emplace(key, std::move(numbers)).first->second;
}

const PropertyColumn &PageColumns::property(std::string_view property)
{
    if (const auto found = m_properties.find(property); found != m_properties.end())
        return found->second;
    PropertyColumn column;
    for (ToolRow row = 0; row < m_size; ++row)
        column.append(toolOf(row).getRawProperty(property));
    makeRoom(m_properties);
    return m_properties.try_emplace(std::string(property), std::move(column)).first->second;
}

NameColumn &PageColumns::names()
{
    if (!m_names) {
        std::vector<std::wstring> names(m_size);
        std::vector<Basics> basics(m_size);
        const std::wstring country = LocaleRegistry::getCurrentCountryCode();
        overTools([&](ToolRow row, const IndexedTool &tool) {
            names[row] = ToolNameGenerator::generateLocalizedName(tool, country);
            basics[row] = basicsOf(tool);
        });
        m_names.emplace(std::move(names));
        m_basics = std::move(basics);
    }
    return *m_names;
}

const SearchColumn &PageColumns::searchTexts()
{
    if (!m_searchTexts) {
        const NameColumn &nameOf = names();
        SearchColumn texts;
        SearchColumn behind;
        const auto append = [&](SearchColumn &column, ToolRow begin, ToolRow end) {
            for (ToolRow row = begin; row < end; ++row)
                column.append(IndexedTool(m_source.toolOfRow(row), nameOf[row]));
        };
        sideBySide(
            m_size, [&] { append(texts, 0, m_size / 2); }, [&] { append(behind, m_size / 2, m_size); });
        texts.append(std::move(behind));
        m_searchTexts.emplace(std::move(texts));
    }
    return *m_searchTexts;
}

const std::vector<std::uint64_t> &PageColumns::typeRanks()
{
    if (!m_typeRanks.empty())
        return m_typeRanks;
    std::map<std::wstring, std::vector<int>> typesOfName;
    for (int type = 0; type <= ToolGeometry::TYPE_PLUNGE_MILL; ++type)
        typesOfName[ToolSpecification::getToolTypeAsLocalizedString(static_cast<ToolGeometry::Type>(type))
                        .asWideString()]
            .push_back(type);
    std::vector<std::uint64_t> ranks(ToolGeometry::TYPE_PLUNGE_MILL + 1);
    std::uint64_t rank = 0;
    for (const auto &[name, types] : typesOfName) {
        for (const int type : types)
            ranks[static_cast<std::size_t>(type)] = rank;
        ++rank;
    }
    m_typeRanks = std::move(ranks);
    return m_typeRanks;
}

/// Names, and with them texts and orders, are in the language of the moment.
void PageColumns::dropForeignLanguage()
{
    const std::uint64_t language = LocaleRegistry::revision();
    if (std::exchange(m_language, language) == language)
        return;
    m_typeRanks.clear();
    m_names.reset();
    m_searchTexts.reset();
    m_orders.clear();
}

const ToolRows *PageColumns::order(std::string_view sortState)
{
    return m_orders.find(sortState, *this);
}

bool PageColumns::isWorthNotes(std::size_t added) const
{
    return m_removed.size() + m_updated.size() + added <= mostNotes;
}

bool PageColumns::noteUpdated(ToolRow row)
{
    if (row < m_size - m_removed.size())
        m_updated.insert(row);
    return isWorthNotes(0);
}

bool PageColumns::noteRemoved(ToolRow row)
{
    if (row >= m_size - m_removed.size())
        return true; // one that came after the columns were made
    m_removed.push_back(row);
    std::set<ToolRow> updated;
    for (const ToolRow other : m_updated)
        if (other != row)
            updated.insert(other > row ? other - 1 : other);
    m_updated = std::move(updated);
    return isWorthNotes(0);
}

bool PageColumns::refresh()
{
    const auto known = static_cast<ToolRow>(m_size - m_removed.size());
    const ToolRow size = m_source.numberOfRows();
    if (!isWorthNotes(size - known))
        return false;
    dropForeignLanguage();
    removeRows(asOfOneTime(std::exchange(m_removed, {})));
    ToolRows changed(m_updated.begin(), m_updated.end());
    m_updated.clear();
    for (ToolRow row = known; row < size; ++row)
        changed.push_back(row);
    changeRows(changed);
    return true;
}

void PageColumns::removeRows(const ToolRows &removed)
{
    if (removed.empty())
        return;
    RowUpkeep::removeElements(m_basics, removed);
    for (auto &[key, numbers] : m_numbers) {
        RowUpkeep::removeElements(numbers.values, removed);
        RowUpkeep::removeElements(numbers.isPresent, removed);
    }
    for (auto &[name, property] : m_properties)
        property.remove(removed);
    if (m_names)
        m_names->remove(removed);
    for (auto row = removed.rbegin(); m_searchTexts && row != removed.rend(); ++row)
        m_searchTexts->remove(*row);
    m_orders.remove(removed);
    m_size -= static_cast<ToolRow>(removed.size());
}

/// \a changed, ascending, with the rows that are new at its end.
void PageColumns::changeRows(const ToolRows &changed)
{
    if (changed.empty())
        return;
    const ToolRow known = m_size;
    m_size = std::max(m_size, changed.back() + 1);
    if (!m_basics.empty() || known == 0)
        m_basics.resize(m_size);
    for (auto &[key, numbers] : m_numbers) {
        numbers.values.resize(m_size);
        numbers.isPresent.resize(m_size);
    }
    std::vector<NameColumn::Change> names;
    for (const ToolRow row : changed) {
        const IndexedTool tool = toolOf(row);
        changeRow(row, row >= known, tool);
        if (m_names)
            names.push_back({row, tool.getName()});
    }
    if (m_names)
        m_names->change(std::move(names));
    m_orders.change(changed, *this);
}

void PageColumns::changeRow(ToolRow row, bool isNew, const IndexedTool &tool)
{
    if (m_basics.size() == m_size)
        m_basics[row] = basicsOf(tool);
    for (auto &[key, numbers] : m_numbers)
        setNumber(numbers, row, ToolKeys::numberOf(tool, key));
    for (auto &[name, property] : m_properties) {
        if (isNew)
            property.append(tool.getRawProperty(name));
        else
            property.replace(row, tool.getRawProperty(name));
    }
    if (!m_searchTexts)
        return;
    if (isNew)
        m_searchTexts->append(tool);
    else
        m_searchTexts->replace(row, tool);
}

std::size_t PageColumns::memory() const
{
    std::size_t bytes = m_basics.capacity() * sizeof(Basics) + m_orders.memory();
    for (const auto &[key, numbers] : m_numbers)
        bytes += numbers.values.capacity() * sizeof(double) + numbers.isPresent.capacity();
    for (const auto &[name, property] : m_properties)
        bytes += property.memory();
    return bytes + (m_names ? m_names->memory() : 0) + (m_searchTexts ? m_searchTexts->memory() : 0);
}

} // namespace Varn::ToolLibraries
