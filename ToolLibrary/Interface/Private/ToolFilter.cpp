#include "ToolLibrary/Interface/Private/ToolFilter.h"

#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

constexpr const char *toolIdentifierKey = "toolIdentifier";

/// The text under a key of the set filters; type and unit by the keywords of their values.
std::optional<std::string> memberText(const IndexedTool &tool, const std::string &key)
{
    if (key == ToolKeys::type)
        return ToolGeometry::getToolTypeAsString(tool.getType());
    if (key == ToolKeys::unit)
        return Messages::fromWideUnicodeToUTF8(NCUnit::getUnitAsString(tool.getUnit()));
    return ToolKeys::textOf(tool, key);
}

} // namespace

ToolFilter::Predicate ToolFilter::createFilterFunction(std::string_view filtersState, std::string_view searchQuery)
{
    std::vector<Predicate> predicates;
    if (!searchQuery.empty())
        predicates.push_back(createSearchFilterFunction(searchQuery));
    const Json::Value filters = ToolKeys::parseState(filtersState);
    for (const Json::Value &filter : filters)
        if (auto predicate = createOneFilterFunction(filter["key"].asString(), filter["values"]))
            predicates.push_back(std::move(*predicate));
    return [predicates = std::move(predicates)](const IndexedTool &tool, const ToolLibraryLocator &library) {
        return std::ranges::all_of(predicates, [&](const Predicate &predicate) { return predicate(tool, library); });
    };
}

std::optional<ToolFilter::Predicate> ToolFilter::createOneFilterFunction(const std::string &key,
                                                                         const Json::Value &values)
{
    if (auto custom = createCustomFilterFunction(key, values))
        return custom;
    if (!values.isArray())
        return std::nullopt;
    if (values.size() == 1 && values[0].isObject())
        return createObjectFilterFunction(key, values[0]);
    std::set<std::string> texts;
    for (const Json::Value &value : values) {
        if (!value.isString())
            return std::nullopt;
        texts.insert(value.asString());
    }
    return createEnumFilterFunction(key, std::move(texts));
}

std::optional<ToolFilter::Predicate> ToolFilter::createObjectFilterFunction(const std::string &key,
                                                                            const Json::Value &object)
{
    const Json::Value &op = object["op"];
    if (op.isString()) {
        const Json::Value &negated = object["negated"];
        auto ordering = createComparisonFunction(op.asString(), negated.isBool() && negated.asBool());
        if (!ordering || !object["value"].isNumeric())
            return std::nullopt;
        return createNumberFilterFunction(key, std::move(*ordering), object["value"].asDouble());
    }
    if (object["lowerBound"].isNumeric() && object["upperBound"].isNumeric())
        return createRangeFilterFunction(key, object["lowerBound"].asDouble(), object["upperBound"].asDouble());
    return std::nullopt;
}

std::optional<ToolFilter::Predicate> ToolFilter::createCustomFilterFunction(const std::string &key,
                                                                            const Json::Value &values)
{
    if (!values.isArray() || values.empty() || key != toolIdentifierKey)
        return std::nullopt;
    std::map<std::string, std::set<std::string>> guidsByLibrary;
    for (const Json::Value &value : values) {
        if (!value.isObject())
            return std::nullopt;
        const Json::Value &guid = value["guid"];
        const Json::Value &library = value["libraryUrl"];
        if (guid.isString() && library.isString())
            guidsByLibrary[library.asString()].insert(guid.asString());
    }
    if (guidsByLibrary.empty())
        return std::nullopt;
    return [guidsByLibrary = std::move(guidsByLibrary)](const IndexedTool &tool, const ToolLibraryLocator &library) {
        const auto guids = guidsByLibrary.find(Messages::fromWideUnicodeToUTF8(library.url()));
        return guids != guidsByLibrary.end() && guids->second.contains(tool.getTool().getToolId().guid().asString());
    };
}

ToolFilter::Predicate ToolFilter::createEnumFilterFunction(const std::string &key, std::set<std::string> texts)
{
    return [key, texts = std::move(texts)](const IndexedTool &tool, const ToolLibraryLocator &) {
        const std::optional<std::string> text = memberText(tool, key);
        return text && texts.contains(*text);
    };
}

std::optional<ToolFilter::Predicate> ToolFilter::createNumberFilterFunction(const std::string &key, Ordering ordering,
                                                                            double number)
{
    return [key, ordering = std::move(ordering), number](const IndexedTool &tool, const ToolLibraryLocator &) {
        const std::optional<double> value = ToolKeys::numberOf(tool, key);
        return value && ordering(*value <=> number);
    };
}

ToolFilter::Predicate ToolFilter::createRangeFilterFunction(const std::string &key, double lower, double upper)
{
    return [key, lower, upper](const IndexedTool &tool, const ToolLibraryLocator &) {
        const std::optional<double> value = ToolKeys::numberOf(tool, key);
        return value && lower <= *value && *value <= upper;
    };
}

std::optional<ToolFilter::Ordering> ToolFilter::createComparisonFunction(const std::string &op, bool negated)
{
    if (op == ":")
        return [negated](std::partial_ordering order) { return (order == 0) != negated; };
    if (op == "<")
        return [](std::partial_ordering order) { return order < 0; };
    if (op == ">")
        return [](std::partial_ordering order) { return order > 0; };
    if (op == "<=")
        return [](std::partial_ordering order) { return order <= 0; };
    if (op == ">=")
        return [](std::partial_ordering order) { return order >= 0; };
    return std::nullopt;
}

ToolFilter::Predicate ToolFilter::createSearchFilterFunction(std::string_view searchQuery)
{
    VARN_ASSERT_TEXT(!searchQuery.empty(), "EXPECTS:!searchQueryView.empty()");
    return [needle = SearchText::normalised(Messages::fromUTF8ToWideUnicode(searchQuery))](const IndexedTool &tool,
                                                                                           const ToolLibraryLocator &) {
        const auto isIn = [&needle](const std::wstring &text) {
            return !text.empty() && SearchText::normalised(text).find(needle) != std::wstring::npos;
        };
        return isIn(tool.getComment()) || isIn(tool.getProductId()) || isIn(tool.getVendor()) || isIn(tool.getName());
    };
}

} // namespace Varn::ToolLibraries
