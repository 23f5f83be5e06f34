// ToolBlock.h -- what joins a turning tool to the turret. A value; the tables are immutable, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/RecordField.h"
#include "platform/nc/ToolTexts.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace Varn {

struct VARN_PLATFORM_EXPORT ToolBlock {
    /// Connections between turret and block: ISO 10889 (VDI), ISO 26623 (polygonal taper), ISO 12164 (hollow taper).
    enum TurretConnectionType : int {
        CONNECTION_VDI = 0,
        CONNECTION_BMT = 1,
        CONNECTION_BOLT_ON = 2,
        CONNECTION_POLYGONAL_TAPER = 3,
        CONNECTION_CUSTOM = 4, ///< one that a person named; never offered
        CONNECTION_HOLLOW_TAPER = 5,
        CONNECTION_DOVETAIL = 6,
        CONNECTION_NONE = 7,
    };

    enum OrientationType : int {
        ORIENTATION_RADIAL = 0,
        ORIENTATION_AXIAL = 1,
        ORIENTATION_RADIAL_AND_AXIAL = 2,
        ORIENTATION_TILTED = 3,
    };

    /// A nominal size of a connection: a code such as VDI 30, not a length.
    struct Size {
        std::string_view name;
        double value; ///< 0 for "Custom"
    };

    /// An entry of a list that a dialog offers.
    struct EnumValue {
        std::wstring key;   ///< what is stored
        std::wstring title; ///< in the language of the moment
    };

    int numberOfAttachmentPoints = 1;
    int numberOfTools = 1;
    OrientationType orientationType = ORIENTATION_RADIAL;
    std::wstring machineSideConnectionType = L"VDI"; ///< keyword of a TurretConnectionType, or a name of a person's own
    double adaptiveItemSize = 0;                     ///< nominal size, not a length
    double maximumRotationalSpeed = 0;               ///< turns per minute, of a live block
    int stationNumber = 0;
    bool halfIndex = false; ///< stands between two stations

    bool attached = false; ///< to a turning tool
    std::wstring guid;     ///< of the attached block
    bool live = false;     ///< of the attached block: driven by the turret
    std::wstring comment;  ///< of the attached block
    ToolTexts texts;       ///< of the attached block

    /// In the order of their values.
    static const std::array<TurretConnectionType, 8> s_turretConnectionTypes;
    /// In ascending order, "Custom" last.
    static const std::array<Size, 14> s_sizes;

    /// Key and title of an entry; the key of a size is its name.
    static EnumValue getAsEnumValue(TurretConnectionType type);
    static EnumValue getAsEnumValue(const Size &size);

    /// The value of a size with the fewest digits: "30".
    static std::wstring getAsString(const Size &size);

    // Keywords in a tool map, compared exactly. An unknown connection is CONNECTION_CUSTOM.
    static std::wstring getTurretConnectionTypeAsWideString(TurretConnectionType type);
    static TurretConnectionType getAsTurretConnectionType(std::wstring_view keyword);
    static std::wstring getOrientationTypeAsWideString(OrientationType type);
    static std::optional<OrientationType> getAsOrientationType(std::wstring_view keyword);

    /// Those that a tool block as a tool has too, under other names of its parameters.
    static constexpr auto fields = std::tuple{
        recordField(&ToolBlock::numberOfAttachmentPoints, "numberOfAttachmentPoints"),
        recordField(&ToolBlock::numberOfTools, "numberOfTools"),
        recordField(&ToolBlock::orientationType, "orientationType"),
        recordField(&ToolBlock::machineSideConnectionType, "machineSideConnectionType"),
        recordField(&ToolBlock::adaptiveItemSize, "adaptiveItemSize"),
        recordField(&ToolBlock::maximumRotationalSpeed, "maximumRotationalSpeed"),
        recordField(&ToolBlock::stationNumber, "stationNumber"),
        recordField(&ToolBlock::halfIndex, "isHalfIndex"),
    };
    /// Those of an attached block alone.
    static constexpr auto attachedFields = std::tuple{
        recordField(&ToolBlock::attached, "attached"),
        storedField(&ToolBlock::guid, "guid"),
        recordField(&ToolBlock::live, "live"),
        recordField(&ToolBlock::comment, "comment"),
    };
};

} // namespace Varn
