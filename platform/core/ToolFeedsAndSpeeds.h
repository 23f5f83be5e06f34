// ToolFeedsAndSpeeds.h -- the cutting data of a tool: what a preset holds, and the current values of a tool. A value,
// any thread.
#pragma once

#include "platform/core/PresetMaterialTypes.h"
#include "platform/nc/NCTool.h"
#include "platform/nc/RecordField.h"
#include "platform/nc/ToolGeometryTypes.h"

#include <optional>
#include <string>

namespace Varn {

enum ToolFeedMode : int {
    FEED_PER_MINUTE = 0,
    FEED_PER_REVOLUTION = 1,
};

/// The processes, each with presets of its own kind. The value is the place of the bit in the table of fields.
enum class ToolPresetKind { Milling, BoringHoleMaking, GeneralHoleMaking, Turning, Probe, Cutting, Depositing };

constexpr unsigned presetKindBit(ToolPresetKind kind)
{
    return 1u << static_cast<unsigned>(kind);
}

namespace PresetKinds {
constexpr unsigned milling = presetKindBit(ToolPresetKind::Milling);
constexpr unsigned holes =
    presetKindBit(ToolPresetKind::BoringHoleMaking) | presetKindBit(ToolPresetKind::GeneralHoleMaking);
constexpr unsigned generalHoles = presetKindBit(ToolPresetKind::GeneralHoleMaking);
constexpr unsigned spinning = milling | holes;
constexpr unsigned turning = presetKindBit(ToolPresetKind::Turning);
constexpr unsigned probe = presetKindBit(ToolPresetKind::Probe);
constexpr unsigned cutting = presetKindBit(ToolPresetKind::Cutting);
constexpr unsigned depositing = presetKindBit(ToolPresetKind::Depositing);
} // namespace PresetKinds

/// One member for each parameter of any kind; a kind uses those that bear its bit, the others stay as they are.
/// Feedrates and surface speeds in mm or in per minute, by the unit of whoever holds them; turns per minute, degrees,
/// seconds, W, A, V; pressures in bar or psi, gas in l/min or cubic feet per hour, masses in g/min or oz/min.
struct ToolFeedsAndSpeeds {
    using Material = PresetMaterialTypes;

    NCTool::Coolant coolant = NCTool::COOLANT_UNSET;
    ToolFeedMode feedMode = FEED_PER_MINUTE; ///< of turning: all feeds; of hole making: plunge and retract
    bool useConstantSurfaceSpeed = false;    ///< the surface speed leads, not the spindle speed
    double spindleSpeed = 0;
    double surfaceSpeed = 0;
    double rampSpindleSpeed = 0;

    double feedCutting = 0;
    double feedEntry = 0;
    double feedExit = 0;
    double feedTransition = 0;
    double feedRamp = 0;
    double feedPlunge = 0;
    double feedPerRevolution = 0; ///< of the plunge feed
    double feedRetract = 0;
    double feedRetractPerRevolution = 0;
    double feedCuttingRel = 0; ///< per revolution, as the next two
    double feedEntryRel = 0;
    double feedExitRel = 0;
    double feedProbeLink = 0;
    double feedProbeMeasure = 0;

    double rampAngle = 0;
    std::optional<double> stepdown;
    std::optional<double> stepover;
    std::optional<double> depthOfCut;

    Material::PresetMaterialCategory materialCategory = Material::MATERIAL_ALL;
    std::wstring materialQuery;
    bool materialUseHardness = false;
    double materialMinimumHardness = 0;  ///< HRC
    double materialMaximumHardness = 70; ///< HRC

    double cutHeight = 0;
    double pressure = 0;
    double pierceTime = 0;
    std::wstring machineQualityControl;
    double cutPower = 0;
    double pierceHeight = 0;
    double piercePower = 0;
    std::wstring assistGas;
    double abrasiveFlowRate = 0;

    double beadWidth = 0;
    double layerThickness = 0;
    double standoffDistance = 0;
    double shieldGasFlowRate = 0;
    double carrierGasFlowRate = 0;
    double auxiliaryGasFlowRate = 0;
    double powderFlowRate = 0;
    double power = 0;
    double current = 0;
    double voltage = 0;
    double feedWire = 0;
    std::optional<int> presetProgram;
};

// clang-format off
inline constexpr auto toolFeedsAndSpeedsFields = [] {
    using F = ToolFeedsAndSpeeds;
    using Q = FieldQuantity;
    using namespace PresetKinds;
    constexpr auto field = [](auto... row) { return recordField(row...); };
    return std::tuple{
        field(&F::coolant,                  "tool_coolant",                        Q::Plain,     spinning | turning),
        field(&F::feedMode,                 "tool_useFeedPerRevolution",           Q::Plain,     holes | turning),
        field(&F::useConstantSurfaceSpeed,  "tool_useConstantSurfaceSpeed",        Q::Plain,     turning),
        field(&F::spindleSpeed,             "tool_spindleSpeed",                   Q::Plain,     spinning | turning),
        field(&F::surfaceSpeed,             "tool_surfaceSpeed",                   Q::Feed,      turning),
        field(&F::rampSpindleSpeed,         "tool_rampSpindleSpeed",               Q::Plain,     milling),
        field(&F::feedCutting,              "tool_feedCutting",                    Q::Feed,      everyKind & ~probe),
        field(&F::feedEntry,                "tool_feedEntry",                      Q::Feed,      everyKind),
        field(&F::feedExit,                 "tool_feedExit",                       Q::Feed,      everyKind & ~probe),
        field(&F::feedTransition,           "tool_feedTransition",                 Q::Feed,      spinning),
        field(&F::feedRamp,                 "tool_feedRamp",                       Q::Feed,      spinning),
        field(&F::feedPlunge,               "tool_feedPlunge",                     Q::Feed,      spinning | depositing),
        field(&F::feedPerRevolution,        "tool_feedPerRevolution",              Q::Feed,      generalHoles),
        field(&F::feedRetract,              "tool_feedRetract",                    Q::Feed,      holes),
        field(&F::feedRetractPerRevolution, "tool_feedRetractPerRevolution",       Q::Feed,      holes),
        field(&F::feedCuttingRel,           "tool_feedCuttingRel",                 Q::Feed,      turning),
        field(&F::feedEntryRel,             "tool_feedEntryRel",                   Q::Feed,      turning),
        field(&F::feedExitRel,              "tool_feedExitRel",                    Q::Feed,      turning),
        field(&F::feedProbeLink,            "tool_feedProbeLink",                  Q::Feed,      probe),
        field(&F::feedProbeMeasure,         "tool_feedProbeMeasure",               Q::Feed,      probe),
        field(&F::rampAngle,                "tool_rampAngle",                      Q::Plain,     milling),
        field(&F::stepdown,                 "tool_stepdown",                       Q::Length,    milling,
              "use_tool_stepdown"),
        field(&F::stepover,                 "tool_stepover",                       Q::Length,    milling | depositing,
              "use_tool_stepover"),
        field(&F::depthOfCut,               "tool_depthOfCut",                     Q::Length,    turning,
              "use_tool_depthOfCut"),
        field(&F::materialCategory,         "tool_presetMaterialCategory",         Q::Plain,     spinning | turning),
        field(&F::materialQuery,            "tool_presetMaterialQuery",            Q::Plain,     spinning | turning),
        field(&F::materialUseHardness,      "tool_presetMaterialUseHardness",      Q::Plain,     spinning | turning),
        field(&F::materialMinimumHardness,  "tool_presetMaterialMinimumHardness",  Q::Plain,     spinning | turning),
        field(&F::materialMaximumHardness,  "tool_presetMaterialMaximumHardness",  Q::Plain,     spinning | turning),
        field(&F::cutHeight,                "tool_cutHeight",                      Q::Length,    cutting),
        field(&F::pressure,                 "tool_pressure",                       Q::Pressure,  cutting),
        field(&F::pierceTime,               "tool_pierceTime",                     Q::Plain,     cutting),
        field(&F::machineQualityControl,    "tool_machineQualityControl",          Q::Plain,     cutting),
        field(&F::cutPower,                 "tool_cutPower",                       Q::Plain,     cutting),
        field(&F::pierceHeight,             "tool_pierceHeight",                   Q::Length,    cutting),
        field(&F::piercePower,              "tool_piercePower",                    Q::Plain,     cutting),
        field(&F::assistGas,                "tool_assistGas",                      Q::Plain,     cutting),
        field(&F::abrasiveFlowRate,         "tool_abrasiveFlowRate",               Q::MassFlow,  cutting),
        field(&F::beadWidth,                "tool_beadWidth",                      Q::Length,    depositing),
        field(&F::layerThickness,           "tool_layerThickness",                 Q::Length,    depositing),
        field(&F::standoffDistance,         "tool_standoffDistance",               Q::Length,    depositing),
        field(&F::shieldGasFlowRate,        "tool_depositingShieldGasFlowRate",    Q::GasFlow,   depositing),
        field(&F::carrierGasFlowRate,       "tool_depositingCarrierGasFlowRate",   Q::GasFlow,   depositing),
        field(&F::auxiliaryGasFlowRate,     "tool_depositingAuxiliaryGasFlowRate", Q::GasFlow,   depositing),
        field(&F::powderFlowRate,           "tool_powderFlowRate",                 Q::MassFlow,  depositing),
        field(&F::power,                    "tool_depositingPower",                Q::Plain,     depositing),
        field(&F::current,                  "tool_depositingCurrent",              Q::Plain,     depositing),
        field(&F::voltage,                  "tool_depositingVoltage",              Q::Plain,     depositing),
        field(&F::feedWire,                 "tool_feedWire",                       Q::Feed,      depositing),
        field(&F::presetProgram,            "tool_presetProgram",                  Q::Plain,     depositing,
              "use_tool_presetProgram"),
    };
}();
// clang-format on

/// The kind of the presets of a type; nothing for holders and tool blocks, which have none. What has no kind of its
/// own, taps and tools without type among them, has that of milling.
VARN_PLATFORM_EXPORT std::optional<ToolPresetKind> getToolPresetKind(ToolGeometryTypes::Type type);

} // namespace Varn
