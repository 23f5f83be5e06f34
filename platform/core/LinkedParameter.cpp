#include "platform/core/LinkedParameter.h"

#include "platform/core/ParameterValues.h"

namespace Varn {

namespace {

constexpr double pi = 3.14159265358979323846;

double ratio(double numerator, double denominator)
{
    return denominator == 0 ? 0 : numerator / denominator;
}

void apply(ParameterValues &values, const ParameterPrototype::Link &link)
{
    if (link.when && values.evaluate(*link.when).result != ExpressionValue(true))
        return;
    const ParameterValues::Detached outcome = values.evaluate(link.formula);
    double number = 0;
    if (outcome.result && std::holds_alternative<double>(*outcome.result))
        number = std::get<double>(*outcome.result);
    else if (outcome.result || outcome.failedAtName ||
             outcome.result.error().code != ExpressionError::Code::DivisionByZero)
        return;
    values.set(link.updates, ParameterSetting::ofNumber(number, values.displayUnit(link.updates), false));
}

} // namespace

double LinkedParameter::calculateSpindleSpeed(double surfaceSpeed, double diameter)
{
    return ratio(surfaceSpeed, pi * diameter);
}

double LinkedParameter::calculateSurfaceSpeed(double spindleSpeed, double diameter)
{
    return pi * diameter * spindleSpeed;
}

double LinkedParameter::calculateCuttingFeedrate(double feedPerTooth, double flutes, double spindleSpeed)
{
    return feedPerTooth * flutes * spindleSpeed;
}

double LinkedParameter::calculateFeedPerTooth(double cuttingFeedrate, double flutes, double spindleSpeed)
{
    return ratio(cuttingFeedrate, flutes * spindleSpeed);
}

double LinkedParameter::calculateFeedPerMinute(double spindleSpeed, double feedPerRevolution)
{
    return spindleSpeed * feedPerRevolution;
}

double LinkedParameter::calculateFeedPerRevolution(double feedrate, double spindleSpeed)
{
    return ratio(feedrate, spindleSpeed);
}

void LinkedParameter::edit(ParameterTable &table, std::wstring_view name, std::wstring_view expression,
                           Units::Unit unit)
{
    table.setParameterExpression(name, expression, unit);
    applyLinks(table, name);
}

void LinkedParameter::edit(ParameterTable &table, std::wstring_view name, double value, Units::Unit unit)
{
    table.setParameter(name, value, unit);
    applyLinks(table, name);
}

void LinkedParameter::applyLinks(ParameterTable &table, std::wstring_view name)
{
    ParameterValues &values = *table.m_values;
    const auto slot = values.prototype().find(name);
    if (!slot)
        return;
    for (const ParameterPrototype::Link &link : values.prototype().linksOf(*slot))
        apply(values, link);
}

} // namespace Varn
