// ToolInsertChoices.cpp -- what a dialog offers for an indexable insert, made of the tables of designations.
#include "platform/nc/InsertDesignationTables.h"
#include "platform/nc/ToolInsert.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

namespace Varn {

namespace {

constexpr const wchar_t *noCode = L"?";
constexpr double noValue = -1;

std::vector<ToolInsert::CrossSection> makeCrossSections()
{
    std::vector<ToolInsert::CrossSection> made;
    for (const CrossSectionRow &row : insertCrossSectionRows())
        made.push_back({Messages::getAsWideString(row.code), LocaleRegistry::registerMessage(row.title)});
    return made;
}

std::vector<ToolInsert::ReliefAngle> makeReliefAngles()
{
    std::vector<ToolInsert::ReliefAngle> made;
    for (const ReliefAngleRow &row : reliefAngleRows())
        made.push_back({Messages::getAsWideString(row.code), LocaleRegistry::registerMessage(row.title), row.degrees});
    made.push_back({noCode, LocaleRegistry::registerMessage("Other"), noValue});
    return made;
}

std::vector<ToolInsert::CornerRadius> makeCornerRadiuses()
{
    std::vector<ToolInsert::CornerRadius> made;
    for (const InsertCornerRadiusRow &row : insertCornerRadiusRows())
        made.push_back({Messages::getAsWideString(row.metricCode), Messages::getAsWideString(row.inchCode),
                        row.millimeters, row.inches});
    made.push_back({noCode, noCode, noValue, noValue});
    return made;
}

std::vector<ToolInsert::Thickness> makeThicknesses()
{
    std::vector<ToolInsert::Thickness> made;
    for (const InsertThicknessRow &row : insertThicknessRows())
        made.push_back(
            {Messages::getAsWideString(row.inchCode), Messages::getAsWideString(row.metricCode), row.inches});
    made.push_back({noCode, noCode, noValue});
    return made;
}

std::vector<ToolInsert::Size> makeSizes()
{
    std::vector<ToolInsert::Size> made;
    for (const bool metric : {true, false}) {
        for (const InsertSizeRow &row : metric ? metricInsertSizeRows() : inchInsertSizeRows())
            made.push_back(
                {metric, Messages::getAsWideString(row.letters), Messages::getAsWideString(row.code), row.circle});
        made.push_back({metric, {}, noCode, noValue});
    }
    return made;
}

} // namespace

const std::vector<ToolInsert::CrossSection> &ToolInsert::crossSections()
{
    static const std::vector<CrossSection> table = makeCrossSections();
    return table;
}

const std::vector<wchar_t> &ToolInsert::tolerances()
{
    static const std::vector<wchar_t> table(insertToleranceLetters().begin(), insertToleranceLetters().end());
    return table;
}

const std::vector<ToolInsert::ReliefAngle> &ToolInsert::reliefAngles()
{
    static const std::vector<ReliefAngle> table = makeReliefAngles();
    return table;
}

const std::vector<ToolInsert::CornerRadius> &ToolInsert::cornerRadiuses()
{
    static const std::vector<CornerRadius> table = makeCornerRadiuses();
    return table;
}

const std::vector<ToolInsert::Thickness> &ToolInsert::thicknesses()
{
    static const std::vector<Thickness> table = makeThicknesses();
    return table;
}

const std::vector<ToolInsert::Size> &ToolInsert::insertSizes()
{
    static const std::vector<Size> table = makeSizes();
    return table;
}

void ToolInsert::init()
{
    crossSections();
    tolerances();
    reliefAngles();
    cornerRadiuses();
    thicknesses();
    insertSizes();
}

} // namespace Varn
