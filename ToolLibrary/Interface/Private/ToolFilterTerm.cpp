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
template <typename ValueOf, typename IsGood>
void narrowByValue(PageColumns &columns, ToolMarks &marks, const ValueOf &valueOf, const IsGood &isGood)
{
    const std::vector<PageColumns::Basics> &basics = columns.basics();
    std::map<std::decay_t<decltype(valueOf(basics.front()))>, bool> known;
    for (ToolRow row = 0; row < columns.size(); ++row) {
        if (!marks[row])
            continue;
        const auto [answer, isNew] = known.try_emplace(valueOf(basics[row]));
        if (isNew)
            answer->second = isGood(answer->first);
        marks[row] = answer->second;
    }
}

} // namespace

ToolFilterTerm::~ToolFilterTerm() = default;

bool SearchTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &) const
{
    const auto isIn = [this](const std::wstring &text) {
        return !text.empty() && SearchText::contains(SearchText::normalised(text), m_needle);
    };
    return isIn(tool.getComment()) || isIn(tool.getProductId()) || isIn(tool.getVendor()) || isIn(tool.getName());
}

void SearchTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, ToolMarks &marks) const
{
    columns.searchTexts().search(m_needle, marks);
}

bool NumberTerm::passes(const IndexedTool &tool, const ToolLibraryLocator &) const
{
    const std::optional<double> value = ToolKeys::numberOf(tool, m_key);
    return value && m_isGood(*value);
}

void NumberTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, ToolMarks &marks) const
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

void TextTerm::narrow(PageColumns &columns, const ToolLibraryLocator &, ToolMarks &marks) const
{
    using Basics = PageColumns::Basics;
    const std::optional<std::string_view> property = ToolKeys::propertyOf(m_key);
    if (m_key == ToolKeys::type) {
        narrowByValue(
            columns, marks, [](const Basics &tool) { return tool.type; },
            [this](auto type) { return m_texts.contains(typeText(type)); });
    } else if (m_key == ToolKeys::unit) {
        narrowByValue(
            columns, marks, [](const Basics &tool) { return tool.unit; },
            [this](auto unit) { return m_texts.contains(unitText(unit)); });
    } else if (m_key == ToolKeys::name) {
        const NameColumn &names = columns.names();
        for (ToolRow row = 0; row < columns.size(); ++row)
            if (marks[row])
                marks[row] = m_texts.contains(Messages::fromWideUnicodeToUTF8(names[row]));
    } else if (property) {
        columns.property(*property).narrow(m_texts, marks);
    } else {
        std::ranges::fill(marks, std::uint8_t{0});
    }
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

void IdentifierTerm::narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const
{
    std::vector<Guid> wanted;
    const auto comesBefore = [](const Guid &a, const Guid &b) { return Guid::compare(a, b) < 0; };
    if (const std::set<std::string> *guids = guidsOf(library)) // in the order of the texts, which is that of the GUIDs
        for (const std::string &text : *guids)
            if (const Guid guid = Guid::fromString(text); guid.asString() == text)
                wanted.push_back(guid);
    const std::vector<PageColumns::Basics> &basics = columns.basics();
    for (ToolRow row = 0; row < columns.size(); ++row)
        if (marks[row])
            marks[row] = std::ranges::binary_search(wanted, basics[row].guid, comesBefore);
}

} // namespace Varn::ToolLibraries
