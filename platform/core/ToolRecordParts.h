// ToolRecordParts.h -- the groups of fields of a tool record, in one list. Stateless, any thread.
#pragma once

#include "platform/core/ToolSpecification.h"

#include <string_view>
#include <utility>

namespace Varn {

/// A group of fields.
struct ToolRecordPart {
    std::string_view element; ///< of the XML form
    std::string_view stem;    ///< before the names of its parameters
    std::string_view turning; ///< the same in the tables of turning tools
};

/// Calls \a visit(part, access, fields) with each group: \a access(record) is the struct, const or not as the record
/// is, and \a fields the tuple of its fields.
template <typename Visit>
void forEachRecordPart(Visit &&visit)
{
    const auto part = [&visit](std::string_view element, std::string_view stem, const auto &access, const auto &fields,
                               std::string_view turning = {}) {
        visit(ToolRecordPart{element, stem, turning.empty() ? stem : turning}, access, fields);
    };
    part(
        "texts", "tool_", [](auto &tool) -> auto & { return tool.texts(); }, ToolTexts::fields);
    part(
        "program", "tool_", [](auto &tool) -> auto & { return tool.nc(); }, NCTool::fields);
    part(
        "cutting", "", [](auto &tool) -> auto & { return tool.cutting(); }, ToolCuttingGeometry::fields);
    part(
        "jet", "", [](auto &tool) -> auto & { return tool.jet(); }, ToolJetGeometry::fields);
    part(
        "turning", "", [](auto &tool) -> auto & { return tool.getTurningParameterization(); },
        TurningToolParameterization::fields);
    part(
        "holder", "", [](auto &tool) -> auto & { return tool.holder(); }, ToolHolder::fields);
    part(
        "holderTexts", "holder_", [](auto &tool) -> auto & { return tool.holder().texts; }, ToolTexts::fields);
    part(
        "block", "tool_", [](auto &tool) -> auto & { return tool.toolBlock(); }, ToolBlock::fields, "tool_block_");
    part(
        "attachedBlock", "tool_block_", [](auto &tool) -> auto & { return tool.toolBlock(); },
        ToolBlock::attachedFields);
    part(
        "blockTexts", "tool_block_", [](auto &tool) -> auto & { return tool.toolBlock().texts; }, ToolTexts::fields);
    part(
        "currentValues", "", [](auto &tool) -> auto & { return tool.currentValues(); }, toolFeedsAndSpeedsFields);
}

/// The same with each field: \a visit(part, access, field).
template <typename Visit>
void forEachRecordField(Visit &&visit)
{
    forEachRecordPart([&visit](const ToolRecordPart &part, const auto &access, const auto &fields) {
        std::apply([&](const auto &...field) { (visit(part, access, field), ...); }, fields);
    });
}

} // namespace Varn
