#include "platform/nc/ToolBlock.h"

#include "platform/nc/KeywordTable.h"
#include "platform/utils/Format.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

namespace Varn {

namespace {

struct ConnectionRow {
    ToolBlock::TurretConnectionType value;
    std::string_view key;
    std::string_view title;
};

struct OrientationRow {
    ToolBlock::OrientationType value;
    std::string_view key;
};

// The keywords are part of the file format and never change.
// clang-format off
constexpr ConnectionRow connections[] = {
    {ToolBlock::CONNECTION_VDI,             "VDI",             "VDI, cylindrical shank"},
    {ToolBlock::CONNECTION_BMT,             "BMT",             "BMT, base mount"       },
    {ToolBlock::CONNECTION_BOLT_ON,         "bolt on",         "Bolt-on"               },
    {ToolBlock::CONNECTION_POLYGONAL_TAPER, "polygonal taper", "Polygonal taper shank" },
    {ToolBlock::CONNECTION_CUSTOM,          "custom",          "Custom"                },
    {ToolBlock::CONNECTION_HOLLOW_TAPER,    "hollow taper",    "Hollow taper shank"    },
    {ToolBlock::CONNECTION_DOVETAIL,        "dovetail",        "Dovetail slide"        },
    {ToolBlock::CONNECTION_NONE,            "none",            "None"                  },
};

constexpr OrientationRow orientations[] = {
    {ToolBlock::ORIENTATION_RADIAL,           "radial"          },
    {ToolBlock::ORIENTATION_AXIAL,            "axial"           },
    {ToolBlock::ORIENTATION_RADIAL_AND_AXIAL, "radial and axial"},
    {ToolBlock::ORIENTATION_TILTED,           "tilted"          },
};
// clang-format on

constexpr KeywordTable connectionTable(connections);
constexpr KeywordTable orientationTable(orientations);
static_assert(connectionTable.isComplete());
static_assert(orientationTable.isComplete());

} // namespace

constexpr std::array<ToolBlock::TurretConnectionType, 8> ToolBlock::s_turretConnectionTypes{
    CONNECTION_VDI,    CONNECTION_BMT,          CONNECTION_BOLT_ON,  CONNECTION_POLYGONAL_TAPER,
    CONNECTION_CUSTOM, CONNECTION_HOLLOW_TAPER, CONNECTION_DOVETAIL, CONNECTION_NONE};

// Nominal sizes of ISO 10889 and of the usual base mounts.
// clang-format off
constexpr std::array<ToolBlock::Size, 14> ToolBlock::s_sizes{{
    {"16", 16}, {"20", 20}, {"25", 25}, {"30", 30}, {"40", 40}, {"45", 45}, {"50", 50},
    {"55", 55}, {"60", 60}, {"65", 65}, {"75", 75}, {"80", 80}, {"85", 85}, {"Custom", 0},
}};
// clang-format on

ToolBlock::EnumValue ToolBlock::getAsEnumValue(TurretConnectionType type)
{
    const auto &row = connectionTable.row(type);
    return {Messages::getAsWideString(row.key), LocaleRegistry::registerMessage(row.title).asWideString()};
}

ToolBlock::EnumValue ToolBlock::getAsEnumValue(const Size &size)
{
    if (size.value == 0)
        return {Messages::getAsWideString(size.name), LocaleRegistry::registerMessage("Custom").asWideString()};
    return {Messages::getAsWideString(size.name), Messages::getAsWideString(size.name)};
}

std::wstring ToolBlock::getAsString(const Size &size)
{
    return Messages::getAsWideString(Format::getDouble(size.value));
}

std::wstring ToolBlock::getTurretConnectionTypeAsWideString(TurretConnectionType type)
{
    return Messages::getAsWideString(connectionTable.row(type).key);
}

ToolBlock::TurretConnectionType ToolBlock::getAsTurretConnectionType(std::wstring_view keyword)
{
    const auto *row = connectionTable.find(keyword);
    return row ? row->value : CONNECTION_CUSTOM;
}

std::wstring ToolBlock::getOrientationTypeAsWideString(OrientationType type)
{
    return Messages::getAsWideString(orientationTable.row(type).key);
}

std::optional<ToolBlock::OrientationType> ToolBlock::getAsOrientationType(std::wstring_view keyword)
{
    const auto *row = orientationTable.find(keyword);
    return row ? std::optional(row->value) : std::nullopt;
}

} // namespace Varn
