// ToolSpecification.h -- the host's record of a tool: what is known of types, inserts and holders by name and by value.
//
// Stateless; any thread. A value that is no enumerator is taken as the value 0 of its enumeration. Keywords are
// compared exactly, as wide text or as UTF-8, and lookups by keyword allocate nothing.
#pragma once

#include "platform/core/Strategy.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/utils/LocalizedMessage.h"
#include "util/utility/Validified.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ToolSpecification : public ToolGeometry
{
public:
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

    // Tool types: the text under "type" in a tool map. "unspecified" is the keyword of TYPE_NONE.
    static std::wstring getToolTypeAsWideString(Type type);
    static Validified<Type> getToolTypeByString(std::string_view keyword);
    static Validified<Type> getToolTypeByString(std::wstring_view keyword);

    /// The name of a type in lists, such as "Bull nose end mill".
    static LocalizedMessage getToolTypeAsLocalizedString(Type type);

    // Inserts: the text under "SC", and the name in lists.
    static std::wstring getInsertTypeAsWideString(InsertType type);
    static Validified<InsertType> getInsertTypeByString(std::string_view keyword);
    static Validified<InsertType> getInsertTypeByString(std::wstring_view keyword);
    static LocalizedMessage getInsertTypeTitle(InsertType type);

    // Holder styles: the text under "THSC", and the name in lists. The empty text is no holder.
    static std::wstring getHolderTypeAsWideString(HolderType type);
    static Validified<HolderType> getHolderTypeByString(std::string_view keyword);
    static Validified<HolderType> getHolderTypeByString(std::wstring_view keyword);
    static LocalizedMessage getHolderTypeTitle(HolderType type);

    // Compensation modes: the text under "compensation" in the setup.
    static std::string getCompensationModeAsString(CompensationMode mode);
    static std::wstring getCompensationModeAsWideString(CompensationMode mode);
    static Validified<CompensationMode> getCompensationModeByString(std::string_view keyword);
    static Validified<CompensationMode> getCompensationModeByString(std::wstring_view keyword);

    /// The text under "tapered-type".
    static std::string getTaperedTypeAsString(TaperedType type);

    // Preset materials: the text under "category", and its value if it has one.
    static std::string getPresetMaterialCategoryAsString(PresetMaterialCategory category);
    static std::optional<PresetMaterialCategory> getAsPresetMaterialCategory(std::string_view keyword);
    static std::optional<PresetMaterialCategory> getAsPresetMaterialCategory(std::wstring_view keyword);

    // What a dialog offers, in its order. Types by value; the custom insert is the first of the inserts, the custom
    // style the last of the holders, where "no holder" is none.
    static const std::vector<Type> &getSupportedTypes();
    static const std::vector<InsertType> &getSupportedInsertTypes();
    static const std::vector<HolderType> &getSupportedHolderTypes();

    /// Whether the insert is made for turning tools of the type.
    static bool isInsertValidForType(InsertType insert, Type type);

    /// The set of parameters of a type.
    static Strategy::Type getStrategyType(Type type);

    /// An inch size as machinists write it: "1/2", or "1-1/2" above 1, with the smallest denominator of 2, 4 .. 64 that
    /// comes within 0.00001 (which lets sixty-fourths through that were rounded to five decimals). Nothing for a size
    /// without such a fraction, and for one that is whole, negative, not finite or at least 1000.
    static std::optional<std::wstring> getFractionalString(double inches);
};

} // namespace Varn
