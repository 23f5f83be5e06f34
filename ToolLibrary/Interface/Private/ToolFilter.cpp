#include "ToolLibrary/Interface/Private/ToolFilter.h"

#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolFilterTerm.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

constexpr const char *toolIdentifierKey = "toolIdentifier";

} // namespace

ToolFilter::Predicate::Predicate(std::vector<Term> terms) : m_terms(std::move(terms)) {}

bool ToolFilter::Predicate::operator()(const IndexedTool &tool, const ToolLibraryLocator &library) const
{
    return std::ranges::all_of(m_terms, [&](const Term &term) { return term->passes(tool, library); });
}

std::vector<std::uint8_t> ToolFilter::Predicate::marksOf(PageColumns &columns, const ToolLibraryLocator &library) const
{
    ToolMarks marks(columns.size(), 1);
    for (const Term &term : m_terms)
        term->narrow(columns, library, marks);
    return marks;
}

ToolFilter::Predicate ToolFilter::createFilterFunction(std::string_view filtersState, std::string_view searchQuery)
{
    std::vector<Term> terms;
    if (!searchQuery.empty())
        terms.push_back(createSearchFilterFunction(searchQuery));
    const Json::Value filters = ToolKeys::parseState(filtersState);
    for (const Json::Value &filter : filters)
        if (Term term = createOneFilterFunction(filter["key"].asString(), filter["values"]))
            terms.push_back(std::move(term));
    return Predicate(std::move(terms));
}

ToolFilter::Term ToolFilter::createOneFilterFunction(const std::string &key, const Json::Value &values)
{
    if (Term custom = createCustomFilterFunction(key, values))
        return custom;
    if (!values.isArray())
        return nullptr;
    if (values.size() == 1 && values[0].isObject())
        return createObjectFilterFunction(key, values[0]);
    std::set<std::string> texts;
    for (const Json::Value &value : values) {
        if (!value.isString())
            return nullptr;
        texts.insert(value.asString());
    }
    return createEnumFilterFunction(key, std::move(texts));
}

ToolFilter::Term ToolFilter::createObjectFilterFunction(const std::string &key, const Json::Value &object)
{
    const Json::Value &op = object["op"];
    if (op.isString()) {
        const Json::Value &negated = object["negated"];
        auto ordering = createComparisonFunction(op.asString(), negated.isBool() && negated.asBool());
        if (!ordering || !object["value"].isNumeric())
            return nullptr;
        return createNumberFilterFunction(key, std::move(*ordering), object["value"].asDouble());
    }
    if (object["lowerBound"].isNumeric() && object["upperBound"].isNumeric())
        return createRangeFilterFunction(key, object["lowerBound"].asDouble(), object["upperBound"].asDouble());
    return nullptr;
}

ToolFilter::Term ToolFilter::createCustomFilterFunction(const std::string &key, const Json::Value &values)
{
    if (!values.isArray() || values.empty() || key != toolIdentifierKey)
        return nullptr;
    IdentifierTerm::GuidsByLibrary guidsByLibrary;
    for (const Json::Value &value : values) {
        if (!value.isObject())
            return nullptr;
        const Json::Value &guid = value["guid"];
        const Json::Value &library = value["libraryUrl"];
        if (guid.isString() && library.isString())
            guidsByLibrary[library.asString()].insert(guid.asString());
    }
    if (guidsByLibrary.empty())
        return nullptr;
    return std::make_shared<IdentifierTerm>(std::move(guidsByLibrary));
}

ToolFilter::Term ToolFilter::createEnumFilterFunction(const std::string &key, std::set<std::string> texts)
{
    return std::make_shared<TextTerm>(key, std::move(texts));
}

ToolFilter::Term ToolFilter::createNumberFilterFunction(const std::string &key, Ordering ordering, double number)
{
    return std::make_shared<NumberTerm>(
        key, [ordering = std::move(ordering), number](double value) { return ordering(value <=> number); });
}

ToolFilter::Term ToolFilter::createRangeFilterFunction(const std::string &key, double lower, double upper)
{
    return std::make_shared<NumberTerm>(key, [lower, upper](double value) { return lower <= value && value <= upper; });
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

ToolFilter::Term ToolFilter::createSearchFilterFunction(std::string_view searchQuery)
{
    VARN_ASSERT_TEXT(!searchQuery.empty(), "EXPECTS:!searchQueryView.empty()");
    return std::make_shared<SearchTerm>(SearchText::normalised(Messages::fromUTF8ToWideUnicode(searchQuery)));
}

} // namespace Varn::ToolLibraries
