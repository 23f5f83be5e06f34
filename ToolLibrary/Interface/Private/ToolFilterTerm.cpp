#include "ToolLibrary/Interface/Private/ToolFilterTerm.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/utils/Messages.h"

#include <algorithm>

namespace Varn::ToolLibraries {

namespace {

std::string typeText(ToolGeometry::Type type)
{
    return ToolGeometry::getToolTypeAsString(type);
}

std::string unitText(NCUnit::Unit unit)
{
    return Messages::fromWideUnicodeToUTF8(NCUnit::getUnitAsString(unit));
}

/// Unmarks the rows whose value is not good; each value that occurs is asked about once.
template <typename Value, typename IsGood>
void narrowByValue(const std::vector<Value> &column, PageColumns::Marks &marks, const IsGood &isGood)
{
    std::map<Value, bool> known;
    for (std::size_t row = 0; row < column.size(); ++row) {
        if (!marks[row])
            continue;
        const auto [answer, isNew] = known.try_emplace(column[row]);
        if (isNew)
            answer->second = isGood(column[row]);
        marks[row] = answer->second;
    }
}

} // namespace

ToolFilterTerm::~ToolFilterTerm() = default;

bool SearchTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &) const
{
    const auto isIn = [this](const std::wstring &text) {
        return !text.empty() && SearchText::normalised(text).find(m_needle) != std::wstring::npos;
    };
    return isIn(tool.getComment()) || isIn(tool.getProductId()) || isIn(tool.getVendor()) || isIn(tool.getName());
}

void SearchTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, PageColumns::Marks &marks) const
{
    columns.search(m_needle, marks);
}

bool NumberTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &) const
{
    const std::optional<double> value = ToolKeys::numberOf(tool, m_key);
    return value && m_isGood(*value);
}

void NumberTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, PageColumns::Marks &marks) const
{
    const PageColumns::Numbers &numbers = columns.numbers(m_key);
    for (std::size_t row = 0; row < marks.size(); ++row)
        if (marks[row])
            marks[row] = numbers.isPresent[row] && m_isGood(numbers.values[row]);
}

bool TextTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &) const
{
    if (m_key == ToolKeys::type)
        return m_texts.contains(typeText(tool.getType()));
    if (m_key == ToolKeys::unit)
        return m_texts.contains(unitText(tool.getUnit()));
    const std::optional<std::string> text = ToolKeys::textOf(tool, m_key);
    return text && m_texts.contains(*text);
}

void TextTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, PageColumns::Marks &marks) const
{
    if (m_key == ToolKeys::type) {
        narrowByValue(columns.types(), marks, [this](auto type) { return m_texts.contains(typeText(type)); });
        return;
    }
    if (m_key == ToolKeys::unit) {
        narrowByValue(columns.units(), marks, [this](auto unit) { return m_texts.contains(unitText(unit)); });
        return;
    }
    const PageColumns::Texts &texts = columns.texts(m_key);
    std::set<std::int32_t> wanted;
    for (const std::string &text : m_texts)
        if (const auto found = texts.idOf.find(text); found != texts.idOf.end())
            wanted.insert(found->second);
    for (std::size_t row = 0; row < marks.size(); ++row)
        if (marks[row])
            marks[row] = wanted.contains(texts.ids[row]);
}

const std::set<std::string> *IdentifierTerm::guidsOf(const ToolLibraryLocator &library) const
{
    const auto guids = m_guids.find(Messages::fromWideUnicodeToUTF8(library.url()));
    return guids == m_guids.end() ? nullptr : &guids->second;
}

bool IdentifierTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &library) const
{
    const std::set<std::string> *guids = guidsOf(library);
    return guids && guids->contains(tool.getTool().getToolId().guid().asString());
}

void IdentifierTerm::narrow(PageColumns &columns, const ToolLibraryLocator &library, PageColumns::Marks &marks) const
{
    PageColumns::Marks named(marks.size());
    if (const std::set<std::string> *guids = guidsOf(library))
        for (const std::string &guid : *guids)
            if (const std::optional<PageColumns::Row> row = columns.rowOf(guid))
                named[*row] = marks[*row];
    marks = std::move(named);
}

} // namespace Varn::ToolLibraries
