// InsertDesignationTables.h -- the sizes of indexable inserts and the codes that stand for them, ISO 1832 in
// millimeters and ANSI B212.4 in inches. Immutable, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <array>
#include <span>
#include <string_view>

namespace Varn {

/// Values beside the exact one that mean the same row: rounded in catalogues, or brought over from the other unit. A 0
/// is none.
using NominalValues = std::array<double, 6>;

struct InsertSizeRow {
    std::string_view code;
    std::string_view letters; ///< the shapes that it is for; empty for every shape
    double circle;            ///< diameter of the inscribed circle
    NominalValues nominal;
};

struct InsertThicknessRow {
    std::string_view metricCode;
    std::string_view inchCode; ///< empty for a thickness that exists in millimeters only
    double inches;
    NominalValues metricNominal; ///< mm
    NominalValues inchNominal;
};

struct InsertCornerRadiusRow {
    std::string_view metricCode;
    std::string_view inchCode;
    double millimeters;
    double inches;
    NominalValues metricNominal; ///< mm
    NominalValues inchNominal;
};

struct ReliefAngleRow {
    std::string_view code;
    std::string_view title; ///< English, what people choose by
    double degrees;
};

struct CrossSectionRow {
    std::string_view code;
    std::string_view title; ///< English
};

VARN_PLATFORM_EXPORT std::span<const InsertSizeRow> metricInsertSizeRows(); ///< circles in mm
VARN_PLATFORM_EXPORT std::span<const InsertSizeRow> inchInsertSizeRows();
VARN_PLATFORM_EXPORT std::span<const InsertThicknessRow> insertThicknessRows();
VARN_PLATFORM_EXPORT std::span<const InsertCornerRadiusRow>
insertCornerRadiusRows(); ///< the first is that of round inserts
VARN_PLATFORM_EXPORT std::span<const ReliefAngleRow> reliefAngleRows();
VARN_PLATFORM_EXPORT std::span<const CrossSectionRow> insertCrossSectionRows();
VARN_PLATFORM_EXPORT std::string_view insertToleranceLetters(); ///< of the tolerance classes

} // namespace Varn
