#include "host/ToolKeyTable.h"

#include "host/UsageError.h"

#include <algorithm>

namespace Quillon {

namespace {

using enum ToolKeyKind;

// clang-format off
constexpr ToolKeyRow rows[] = {
    // word               property                      kind    title
    {"assembly-gauge-length", "tool_assemblyGaugeLength", Length, "Assembly gauge"},
    {"body-length",       "tool_bodyLength",            Length, "Body length"     },
    {"comment",           "tool_comment",               Text,   "Comment"         },
    {"corner-radius",     "tool_cornerRadius",          Length, "Radius"          },
    {"description",       "tool_description",           Text,   "Description"     },
    {"diameter",          "tool_diameter",              Length, "Diameter"        },
    {"diameter-offset",   "tool_diameterOffset",        Number, "Diameter offset" },
    {"flute-length",      "tool_fluteLength",           Length, "Flute length"    },
    {"flutes",            "tool_numberOfFlutes",        Number, "Flutes"          },
    {"groove-width",      "tool_grooveWidth",           Length, "Groove width"    },
    {"hand",              "tool_hand",                  Text,   "Hand"            },
    {"insert-size",       "tool_insertSize",            Length, "Insert size"     },
    {"insert-type",       "tool_insertType",            Text,   "Insert"          },
    {"length-offset",     "tool_lengthOffset",          Number, "Length offset"   },
    {"material",          "tool_material",              Text,   "Material"        },
    {"name",              "",                           Name,   "Name"            },
    {"number",            "tool_number",                Number, "No"              },
    {"overall-length",    "tool_overallLength",         Length, "Length"          },
    {"point-angle",       "tool_pointAngle",            Angle,  "Point angle"     },
    {"product-id",        "tool_productId",             Text,   "Product id"      },
    {"product-link",      "tool_productLink",           Text,   "Product link"    },
    {"shaft-diameter",    "tool_shaftDiameter",         Length, "Shaft"           },
    {"shoulder-diameter", "tool_shoulderDiameter",      Length, "Shoulder"        },
    {"shoulder-length",   "tool_shoulderLength",        Length, "Shoulder length" },
    {"station",           "tool_stationNumber",         Number, "Station"         },
    {"taper-angle",       "tool_taperAngle",            Angle,  "Taper angle"     },
    {"teeth",             "tool_numberOfTeeth",         Number, "Teeth"           },
    {"thread-pitch",      "tool_threadPitch",           Length, "Pitch"           },
    {"tip-diameter",      "tool_tipDiameter",           Length, "Tip diameter"    },
    {"tip-length",        "tool_tipLength",             Length, "Tip length"      },
    {"turret",            "tool_turret",                Number, "Turret"          },
    {"type",              "tool_type",                  Type,   "Type"            },
    {"unit",              "tool_unit",                  Unit,   "Unit"            },
    {"vendor",            "tool_vendor",                Text,   "Vendor"          },
};
// clang-format on

static_assert(std::ranges::is_sorted(rows, {}, &ToolKeyRow::word));

constexpr const char *normValueSuffix = ".normValue";

std::string propertyKey(const ToolKeyRow &row)
{
    return row.kind == Name ? "components.info.name" : "components.indexedProperties." + std::string(row.property);
}

std::string allWords()
{
    std::string words;
    for (const ToolKeyRow &row : rows)
        words += (words.empty() ? "" : ", ") + std::string(row.word);
    return words;
}

} // namespace

std::span<const ToolKeyRow> toolKeyRows()
{
    return rows;
}

const ToolKeyRow &toolKey(std::string_view word)
{
    const auto found = std::ranges::find_if(rows, [word](const ToolKeyRow &row) {
        return row.word == word || (!row.property.empty() && row.property == word);
    });
    if (found == std::end(rows))
        throw UsageError("Unknown key: " + std::string(word) + ". The keys are " + allWords());
    return *found;
}

std::string filterKey(const ToolKeyRow &row)
{
    return row.kind == Length ? propertyKey(row) + normValueSuffix : propertyKey(row);
}

std::string sortKey(const ToolKeyRow &row)
{
    return row.kind == Length || row.kind == Angle ? propertyKey(row) + normValueSuffix : propertyKey(row);
}

} // namespace Quillon
