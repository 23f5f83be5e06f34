#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace Varn::ToolLibraries {

namespace {

/// One or two member names; the second is empty for a member of the tool object itself.
struct Path {
    std::string_view outer{};
    std::string_view inner{};
};

/// A key with up to two paths; a path without names is none.
struct Row {
    std::string_view key;
    Path first{};
    Path second{};
};

// Member names in capitals are symbols of ISO 13399 and ISO 1832. Where a key has two paths, the second is that of a
// holder or tool block that stands alone, or of a turning tool.
// clang-format off
constexpr Row rows[] = {
    {"groove-comp-opposite-edge",            {"setup", "tool_grooveCompOppositeEdge"}},
    {"holder_attached"},
    {"holder_description",                   {"holder", "description"}},
    {"holder_productId",                     {"holder", "product-id"}},
    {"holder_productLink",                   {"holder", "product-link"}},
    {"holder_vendor",                        {"holder", "vendor"}},
    {"tool_abrasiveFlowRate"},
    {"tool_adaptiveItemSize",                {"adaptiveItemSize"}},
    {"tool_angle",                           {"setup", "angle"}},
    {"tool_assemblyGaugeLength",             {"geometry", "assemblyGaugeLength"}},
    {"tool_assistGas"},
    {"tool_axialDistance",                   {"geometry", "axial-distance"}},
    {"tool_beadWidth"},
    {"tool_block_adaptiveItemSize",          {"tool-block", "adaptiveItemSize"}},
    {"tool_block_attached"},
    {"tool_block_comment",                   {"tool-block", "comment"}},
    {"tool_block_description",               {"tool-block", "description"}},
    {"tool_block_isHalfIndex",               {"tool-block", "halfIndex"}},
    {"tool_block_live",                      {"tool-block", "live"}},
    {"tool_block_machineSideConnectionType", {"tool-block", "machineSideConnectionType"}},
    {"tool_block_maximumRotationalSpeed",    {"tool-block", "maximumRotationalSpeed"}},
    {"tool_block_numberOfAttachmentPoints",  {"tool-block", "numberOfAttachmentPoints"}},
    {"tool_block_numberOfTools",             {"tool-block", "numberOfTools"}},
    {"tool_block_orientationType",           {"tool-block", "orientationType"}},
    {"tool_block_productId",                 {"tool-block", "product-id"}},
    {"tool_block_productLink",               {"tool-block", "product-link"}},
    {"tool_block_stationNumber",             {"tool-block", "stationNumber"}},
    {"tool_block_vendor",                    {"tool-block", "vendor"}},
    {"tool_bodyLength",                      {"geometry", "LB"}},
    {"tool_breakControl",                    {"post-process", "break-control"}},
    {"tool_chamferAngle",                    {"geometry", "chamfer-angle"}},
    {"tool_chamferWidth",                    {"geometry", "chamfer-width"}},
    {"tool_clamping",                        {"holder", "MTP"}},
    {"tool_clockwise",                       {"geometry", "HAND"}, {"setup", "HAND"}},
    {"tool_comment",                         {"post-process", "comment"}, {"comment"}},
    {"tool_compensation",                    {"setup", "compensation"}},
    {"tool_compensationOffset",              {"post-process", "compensation-offset"}},
    {"tool_coolant"},
    {"tool_coolantSupport",                  {"geometry", "CSP"}},
    {"tool_cornerRadius",                    {"geometry", "RE"}},
    {"tool_crossSection",                    {"geometry", "SCTY"}},
    {"tool_cutHeight"},
    {"tool_cutPower"},
    {"tool_cuttingWidth",                    {"holder", "CW"}},
    {"tool_depositingAuxiliaryGasFlowRate"},
    {"tool_depositingCarrierGasFlowRate"},
    {"tool_depositingCurrent"},
    {"tool_depositingPower"},
    {"tool_depositingShieldGasFlowRate"},
    {"tool_depositingVoltage"},
    {"tool_depthOfCut"},
    {"tool_description",                     {"description"}},
    {"tool_diameter",                        {"geometry", "DC"}, {"geometry", "INSD"}},
    {"tool_diameterOffset",                  {"post-process", "diameter-offset"}},
    {"tool_endCutting",                      {"holder", "tool_endCutting"}},
    {"tool_feedCutting"},
    {"tool_feedCuttingRel"},
    {"tool_feedEntry"},
    {"tool_feedEntryRel"},
    {"tool_feedExit"},
    {"tool_feedExitRel"},
    {"tool_feedPerRevolution"},
    {"tool_feedPerTooth"},
    {"tool_feedPlunge"},
    {"tool_feedProbeLink"},
    {"tool_feedProbeMeasure"},
    {"tool_feedRamp"},
    {"tool_feedRetract"},
    {"tool_feedRetractPerRevolution"},
    {"tool_feedTransition"},
    {"tool_feedWire"},
    {"tool_finishingStepdown"},
    {"tool_finishingStepover"},
    {"tool_fluteLength",                     {"geometry", "LCF"}},
    {"tool_grooveCompOppositeEdge",          {"setup", "tool_grooveCompOppositeEdge"}},
    {"tool_grooveWidth",                     {"geometry", "tool_grooveWidth"}},
    {"tool_hand",                            {"holder", "HAND"}},
    {"tool_headClearance",                   {"geometry", "JET_HEAD_CLEARANCE"}},
    {"tool_headLength",                      {"geometry", "LH"}},
    {"tool_holderGaugeLength",               {"holder", "gaugeLength"}, {"gaugeLength"}},
    {"tool_holderHeadLength",                {"holder", "LH"}},
    {"tool_holderOverallLength",             {"holder", "OAL"}},
    {"tool_holderType",                      {"holder", "THSC"}},
    {"tool_insertAngle",                     {"geometry", "EPSR"}},
    {"tool_insertSize",                      {"geometry", "INSD"}},
    {"tool_insertSizeSpecificationMode",     {"geometry", "SIZE_SPECIFICATION_MODE"}},
    {"tool_insertType",                      {"geometry", "SC"}},
    {"tool_insertWidth",                     {"geometry", "tool_insertWidth"}},
    {"tool_internalThread",                  {"geometry", "tool_internalThread"}},
    {"tool_isHalfIndex",                     {"halfIndex"}},
    {"tool_kerfWidth",                       {"geometry", "CW"}},
    {"tool_layerThickness"},
    {"tool_leadingAngle",                    {"holder", "tool_leadingAngle"}},
    {"tool_lengthNonCuttingEdge",            {"geometry", "NON_CUTTING_EDGE_LENGTH"}},
    {"tool_lengthOffset",                    {"post-process", "length-offset"}},
    {"tool_live",                            {"post-process", "live"}, {"live"}},
    {"tool_lowerRadius",                     {"geometry", "lower-radius"}},
    {"tool_machineQualityControl"},
    {"tool_machineSideConnectionType",       {"machineSideConnectionType"}},
    {"tool_manualToolChange",                {"post-process", "manual-tool-change"}},
    {"tool_material",                        {"BMC"}},
    {"tool_maximumCuttingDiameter",          {"geometry", "DCX"}},
    {"tool_maximumRotationalSpeed",          {"maximumRotationalSpeed"}},
    {"tool_maximumThreadPitch",              {"geometry", "TPX"}},
    {"tool_minimumThreadPitch",              {"geometry", "TPN"}},
    {"tool_nozzleDiameter",                  {"geometry", "JET_NOZZLE_DIAMETER"}},
    {"tool_number",                          {"post-process", "number"}},
    {"tool_numberOfAttachmentPoints",        {"numberOfAttachmentPoints"}},
    {"tool_numberOfFlutes",                  {"geometry", "NOF"}},
    {"tool_numberOfTeeth",                   {"geometry", "NT"}},
    {"tool_numberOfTools",                   {"numberOfTools"}},
    {"tool_orientationType",                 {"orientationType"}},
    {"tool_overallLength",                   {"geometry", "OAL"}},
    {"tool_pierceHeight"},
    {"tool_piercePower"},
    {"tool_pierceTime"},
    {"tool_pointAngle",                      {"geometry", "SIG"}},
    {"tool_powderFlowRate"},
    {"tool_presetMaterialCategory"},
    {"tool_presetMaterialMaximumHardness"},
    {"tool_presetMaterialMinimumHardness"},
    {"tool_presetMaterialQuery"},
    {"tool_presetMaterialUseHardness"},
    {"tool_presetProgram"},
    {"tool_pressure"},
    {"tool_productId",                       {"product-id"}},
    {"tool_productLink",                     {"product-link"}},
    {"tool_profileRadius",                   {"geometry", "profile-radius"}},
    {"tool_rampAngle"},
    {"tool_rampSpindleSpeed"},
    {"tool_rampType"},
    {"tool_reliefAngle",                     {"geometry", "RA"}},
    {"tool_roundShank",                      {"holder", "tool_roundShank"}},
    {"tool_shaftAxisAngle",                  {"setup", "tool_shaftAxisAngle"}},
    {"tool_shaftDiameter",                   {"geometry", "SFDM"}},
    {"tool_shankHeight",                     {"holder", "H"}},
    {"tool_shankWidth",                      {"holder", "W"}},
    {"tool_shoulderDiameter",                {"geometry", "shoulder-diameter"}},
    {"tool_shoulderLength",                  {"geometry", "shoulder-length"}},
    {"tool_sideCutting",                     {"holder", "tool_sideCutting"}},
    {"tool_spindleSpeed"},
    {"tool_standoffDistance"},
    {"tool_stationNumber",                   {"stationNumber"}},
    {"tool_stepdown"},
    {"tool_stepover"},
    {"tool_surfaceSpeed"},
    {"tool_taperAngle",                      {"geometry", "TA"}},
    {"tool_taperedType",                     {"tapered-type"}},
    {"tool_thickness",                       {"geometry", "S"}},
    {"tool_threadPitch",                     {"geometry", "TP"}},
    {"tool_threadProfileAngle",              {"geometry", "thread-profile-angle"}},
    {"tool_threadTipRadius",                 {"geometry", "thread-tip-radius"}},
    {"tool_threadTipType",                   {"geometry", "thread-tip-type"}},
    {"tool_threadTipWidth",                  {"geometry", "thread-tip-width"}},
    {"tool_tipAngle",                        {"geometry", "SIG"}},
    {"tool_tipDiameter",                     {"geometry", "tip-diameter"}},
    {"tool_tipLength",                       {"geometry", "tip-length"}},
    {"tool_tipOffset",                       {"geometry", "tip-offset"}},
    {"tool_tolerance",                       {"geometry", "TC"}},
    {"tool_trailingAngle",                   {"holder", "tool_trailingAngle"}},
    {"tool_turret",                          {"post-process", "turret"}},
    {"tool_type",                            {"type"}},
    {"tool_unit",                            {"unit"}},
    {"tool_upperRadius",                     {"geometry", "upper-radius"}},
    {"tool_useConstantSurfaceSpeed"},
    {"tool_useFeedPerRevolution"},
    {"tool_vendor",                          {"vendor"}},
    {"use_tool_depthOfCut"},
    {"use_tool_presetProgram"},
    {"use_tool_stepdown"},
    {"use_tool_stepover"},
};
// clang-format on

static_assert(std::ranges::is_sorted(rows, std::ranges::less_equal{}, &Row::key)); // and so without duplicates

void addPath(ToolParameterJSONKeyPaths::PathList &paths, const Path &path)
{
    if (path.outer.empty())
        return;
    std::list<std::string_view> &names = paths.emplace_back();
    names.push_back(path.outer);
    if (!path.inner.empty())
        names.push_back(path.inner);
}

std::map<std::string_view, ToolParameterJSONKeyPaths::PathList> makePaths()
{
    std::map<std::string_view, ToolParameterJSONKeyPaths::PathList> paths;
    for (const Row &row : rows) {
        ToolParameterJSONKeyPaths::PathList &list = paths[row.key];
        addPath(list, row.first);
        addPath(list, row.second);
    }
    return paths;
}

std::unordered_map<std::string_view, const ToolParameterJSONKeyPaths::PathList *> makeIndex()
{
    std::unordered_map<std::string_view, const ToolParameterJSONKeyPaths::PathList *> index;
    index.reserve(std::size(rows));
    for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get())
        index.emplace(key, &paths);
    return index;
}

} // namespace

const std::map<std::string_view, ToolParameterJSONKeyPaths::PathList> &ToolParameterJSONKeyPaths::get()
{
    static const auto paths = makePaths();
    return paths;
}

const ToolParameterJSONKeyPaths::PathList *ToolParameterJSONKeyPaths::find(std::string_view key)
{
    static const auto index = makeIndex();
    const auto found = index.find(key);
    return found == index.end() ? nullptr : found->second;
}

} // namespace Varn::ToolLibraries
