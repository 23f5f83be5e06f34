// NCTool.h -- a tool as machine and program see it. A value; the operations are stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/RecordField.h"

#include <optional>
#include <string>
#include <string_view>

namespace Varn {

struct VARN_PLATFORM_EXPORT NCTool {
    /// What the body or the cutting edge is made of. Letters of ISO 513 in parentheses.
    enum Material : int {
        MATERIAL_UNSPECIFIED = 0,
        MATERIAL_HSS = 1,
        MATERIAL_COBALT = 2,
        MATERIAL_CARBIDE = 3,        ///< (HW)
        MATERIAL_COATED_CARBIDE = 4, ///< (HC)
        MATERIAL_CERMET = 5,         ///< (HT)
        MATERIAL_CERAMICS = 6,       ///< (CA, CM, CN, CR)
        MATERIAL_BORON_NITRIDE = 7,  ///< (BL, BH, BC)
        MATERIAL_DIAMOND = 8,        ///< (DP, DM)
        MATERIAL_TOOL_STEEL = 9,
    };

    enum Coolant : int {
        COOLANT_DISABLED = 0,
        COOLANT_FLOOD = 1,
        COOLANT_MIST = 2,
        COOLANT_THROUGH_TOOL = 3,
        COOLANT_AIR = 4,
        COOLANT_AIR_THROUGH_TOOL = 5,
        COOLANT_SUCTION = 6,
        COOLANT_FLOOD_AND_MIST = 7,
        COOLANT_FLOOD_AND_THROUGH_TOOL = 8,
        COOLANT_UNSET = 9, ///< none has been chosen
    };

    int number = 0;
    int turret = 0;
    int diameterOffset = 0;
    int lengthOffset = 0;
    int compensationOffset = 0; ///< of turning tools
    std::wstring comment;
    bool breakControl = false;
    bool manualToolChange = false;
    bool live = true; ///< driven by a spindle
    Material material = MATERIAL_UNSPECIFIED;

    // The texts under "BMC" and "tool-coolant" in a tool map, compared exactly. A value that is none counts as 0.
    static std::string getMaterialAsString(Material material);
    static std::optional<Material> getAsMaterial(std::string_view keyword);
    static std::optional<Material> getAsMaterial(std::wstring_view keyword);
    static std::string getCoolantAsString(Coolant coolant);
    static std::optional<Coolant> getAsCoolant(std::string_view keyword);
    static std::optional<Coolant> getAsCoolant(std::wstring_view keyword);

    static constexpr auto fields = std::tuple{
        recordField(&NCTool::number, "number"),
        recordField(&NCTool::turret, "turret"),
        recordField(&NCTool::diameterOffset, "diameterOffset"),
        recordField(&NCTool::lengthOffset, "lengthOffset"),
        recordField(&NCTool::compensationOffset, "compensationOffset"),
        recordField(&NCTool::comment, "comment"),
        recordField(&NCTool::breakControl, "breakControl"),
        recordField(&NCTool::manualToolChange, "manualToolChange"),
        recordField(&NCTool::live, "live"),
        recordField(&NCTool::material, "material"),
    };
};

} // namespace Varn
