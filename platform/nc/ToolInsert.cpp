#include "platform/nc/ToolInsert.h"

#include "platform/nc/InsertDesignationTables.h"

#include <cmath>
#include <limits>

namespace Varn {

namespace {

constexpr double millimetersPerInch = 25.4;
constexpr double angleTolerance = 0.0001; // degrees
constexpr const wchar_t *noCode = L"?";

/// The least distance of \a value to the exact value of a row or to one that means the same.
double distanceTo(double exact, const NominalValues &nominal, double value)
{
    double least = std::abs(exact - value);
    for (const double same : nominal)
        if (same != 0)
            least = std::min(least, std::abs(same - value));
    return least;
}

/// The row with the least distance within \a tolerance, the first of several; null without one.
template <typename Rows, typename Distance>
auto closestRow(const Rows &rows, double tolerance, const Distance &distance) -> decltype(rows.data())
{
    decltype(rows.data()) closest = nullptr;
    double least = std::numeric_limits<double>::max();
    for (const auto &row : rows) {
        const double away = distance(row);
        if (away <= tolerance && away < least) {
            least = away;
            closest = &row;
        }
    }
    return closest;
}

constexpr double unreachable = std::numeric_limits<double>::infinity();

std::wstring wide(std::string_view code)
{
    return code.empty() ? noCode : std::wstring(code.begin(), code.end());
}

bool isForShape(const InsertSizeRow &row, wchar_t letter)
{
    return row.letters.empty() ||
           (letter != 0 && row.letters.find(static_cast<char>(letter)) != std::string_view::npos);
}

} // namespace

ToolInsert::Designation ToolInsert::getClosestSize(double value, double tolerance, ToolGeometry::InsertType type,
                                                   bool metric)
{
    const wchar_t letter = ToolGeometry::insertTypeChar(type);
    const auto rows = metric ? metricInsertSizeRows() : inchInsertSizeRows();
    const auto *row = closestRow(rows, tolerance, [&](const InsertSizeRow &size) {
        return isForShape(size, letter) ? distanceTo(size.circle, size.nominal, value) : unreachable;
    });
    if (!row)
        return {noCode, noCode};
    return metric ? Designation{wide(row->code), noCode} : Designation{noCode, wide(row->code)};
}

ToolInsert::Designation ToolInsert::getClosestThickness(double value, double tolerance, bool metric)
{
    const auto *row = closestRow(insertThicknessRows(), tolerance, [&](const InsertThicknessRow &thickness) {
        if (metric)
            return distanceTo(thickness.inches * millimetersPerInch, thickness.metricNominal, value);
        return thickness.inchCode.empty() ? unreachable : distanceTo(thickness.inches, thickness.inchNominal, value);
    });
    return row ? Designation{wide(row->metricCode), wide(row->inchCode)} : Designation{noCode, noCode};
}

ToolInsert::Designation ToolInsert::getClosestCornerRadius(double value, double tolerance,
                                                           ToolGeometry::InsertType type, bool metric)
{
    const auto rows = insertCornerRadiusRows();
    if (type == ToolGeometry::INSERT_R)
        return {wide(rows.front().metricCode), wide(rows.front().inchCode)};
    const auto *row = closestRow(rows.subspan(1), tolerance, [&](const InsertCornerRadiusRow &radius) {
        return metric ? distanceTo(radius.millimeters, radius.metricNominal, value)
                      : distanceTo(radius.inches, radius.inchNominal, value);
    });
    return row ? Designation{wide(row->metricCode), wide(row->inchCode)} : Designation{noCode, noCode};
}

std::wstring ToolInsert::getReliefAngleChar(double degrees)
{
    const auto *row = closestRow(reliefAngleRows(), angleTolerance,
                                 [degrees](const ReliefAngleRow &angle) { return std::abs(angle.degrees - degrees); });
    return row ? wide(row->code) : noCode;
}

} // namespace Varn
