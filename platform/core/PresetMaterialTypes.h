// PresetMaterialTypes.h -- the materials of workpieces that presets are for. Values, any thread.
#pragma once

namespace Varn {

/// Base of ToolSpecification, by whose name they are known.
struct PresetMaterialTypes {
    /// The material of the workpiece that a preset is for. Groups of ISO 513 in parentheses.
    enum PresetMaterialCategory : int {
        MATERIAL_ALL = 0,
        MATERIAL_STEEL = 1,      ///< (P)
        MATERIAL_STAINLESS = 2,  ///< (M)
        MATERIAL_CAST_IRON = 3,  ///< (K)
        MATERIAL_ALUMINIUM = 4,  ///< (N)
        MATERIAL_COPPER = 5,     ///< (N)
        MATERIAL_TITANIUM = 6,   ///< (S)
        MATERIAL_SUPERALLOY = 7, ///< (S)
        MATERIAL_HARDENED = 8,   ///< (H)
        MATERIAL_PLASTIC = 9,    ///< (N)
        MATERIAL_COMPOSITE = 10, ///< (N)
        MATERIAL_WOOD = 11,      ///< (N)
    };
};

} // namespace Varn
