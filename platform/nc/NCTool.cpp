#include "platform/nc/NCTool.h"

#include "platform/nc/KeywordTable.h"

namespace Varn {

namespace {

template <typename Value>
struct Row {
    Value value;
    std::string_view key;
};

// The keywords are part of the file format and never change.
// clang-format off
constexpr Row<NCTool::Material> materials[] = {
    {NCTool::MATERIAL_UNSPECIFIED,    "unspecified"   },
    {NCTool::MATERIAL_HSS,            "hss"           },
    {NCTool::MATERIAL_COBALT,         "cobalt"        },
    {NCTool::MATERIAL_CARBIDE,        "carbide"       },
    {NCTool::MATERIAL_COATED_CARBIDE, "coated carbide"},
    {NCTool::MATERIAL_CERMET,         "cermet"        },
    {NCTool::MATERIAL_CERAMICS,       "ceramics"      },
    {NCTool::MATERIAL_BORON_NITRIDE,  "boron nitride" },
    {NCTool::MATERIAL_DIAMOND,        "diamond"       },
    {NCTool::MATERIAL_TOOL_STEEL,     "tool steel"    },
};

constexpr Row<NCTool::Coolant> coolants[] = {
    {NCTool::COOLANT_DISABLED,               "disabled"              },
    {NCTool::COOLANT_FLOOD,                  "flood"                 },
    {NCTool::COOLANT_MIST,                   "mist"                  },
    {NCTool::COOLANT_THROUGH_TOOL,           "through tool"          },
    {NCTool::COOLANT_AIR,                    "air"                   },
    {NCTool::COOLANT_AIR_THROUGH_TOOL,       "air through tool"      },
    {NCTool::COOLANT_SUCTION,                "suction"               },
    {NCTool::COOLANT_FLOOD_AND_MIST,         "flood and mist"        },
    {NCTool::COOLANT_FLOOD_AND_THROUGH_TOOL, "flood and through tool"},
    {NCTool::COOLANT_UNSET,                  "unset"                 },
};
// clang-format on

constexpr KeywordTable materialTable(materials);
constexpr KeywordTable coolantTable(coolants);
static_assert(materialTable.isComplete());
static_assert(coolantTable.isComplete());

template <typename Value>
std::optional<Value> valueOf(const Row<Value> *row)
{
    return row ? std::optional<Value>(row->value) : std::nullopt;
}

} // namespace

std::string NCTool::getMaterialAsString(Material material)
{
    return std::string(materialTable.row(material).key);
}

std::optional<NCTool::Material> NCTool::getAsMaterial(std::string_view keyword)
{
    return valueOf(materialTable.find(keyword));
}

std::optional<NCTool::Material> NCTool::getAsMaterial(std::wstring_view keyword)
{
    return valueOf(materialTable.find(keyword));
}

std::string NCTool::getCoolantAsString(Coolant coolant)
{
    return std::string(coolantTable.row(coolant).key);
}

std::optional<NCTool::Coolant> NCTool::getAsCoolant(std::string_view keyword)
{
    return valueOf(coolantTable.find(keyword));
}

std::optional<NCTool::Coolant> NCTool::getAsCoolant(std::wstring_view keyword)
{
    return valueOf(coolantTable.find(keyword));
}

} // namespace Varn
