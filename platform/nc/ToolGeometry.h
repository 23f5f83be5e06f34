// ToolGeometry.h -- the shape of a cutting tool: what is known of the types, and the sizes of one tool. A value.
//
// The operations by type are stateless and may be called on any thread. A value of one of the enumerations that is no
// enumerator of it (read from a damaged file, say) is taken as the value 0 of that enumeration.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/NCUnit.h"
#include "platform/nc/ToolBlock.h"
#include "platform/nc/ToolCuttingGeometry.h"
#include "platform/nc/ToolGeometryTypes.h"
#include "platform/nc/ToolHolder.h"
#include "platform/nc/ToolProfile.h"
#include "platform/nc/ToolSection.h"
#include "platform/nc/TurningToolParameterization.h"
#include "platform/utils/Angle.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

class Tool3DGeometry;
class Tool3DGeometryBase;
class ToolPlaceholder3DGeometry;

/// Of a record: lengths in getUnit(), angles in degrees unless they are an Angle.
class VARN_PLATFORM_EXPORT ToolGeometry : public ToolGeometryTypes
{
public:
    using TurningToolParameterization = Varn::TurningToolParameterization;

    ToolGeometry();
    ToolGeometry(const ToolGeometry &);
    ToolGeometry(ToolGeometry &&) noexcept;
    ToolGeometry &operator=(const ToolGeometry &);
    ToolGeometry &operator=(ToolGeometry &&) noexcept;
    virtual ~ToolGeometry();

    Type getType() const { return m_type; }
    void setType(Type type) { m_type = type; }
    NCUnit::Unit getUnit() const { return m_unit; }
    void setUnit(NCUnit::Unit unit) { m_unit = unit; } ///< changes no number

    // The sizes as they were given.
    const ToolCuttingGeometry &cutting() const { return m_cutting; }
    ToolCuttingGeometry &cutting() { return m_cutting; }
    const ToolJetGeometry &jet() const { return m_jet; }
    ToolJetGeometry &jet() { return m_jet; }
    const TurningToolParameterization &getTurningParameterization() const { return m_turning; }
    TurningToolParameterization &getTurningParameterization() { return m_turning; }
    void setTurningParameterization(TurningToolParameterization turning) { m_turning = std::move(turning); }

    // Sizes that follow from the shape where nobody gave them. The formulas are plain trigonometry on the shapes of
    // ISO 13399-3, the same as the defaults of the parameters.

    /// LB + 3 SFDM.
    double getOverallLength() const;
    /// By the type: DC; tapered mill DC + 2 tan(TA) shoulder length; face mill DC + 2 tan(TA) LCF; radius mill DC + 2
    /// RE; dovetail mill DC - 2 tan(TA) (LCF - RE (1 + 1 / sin(TA))) - 2 RE; thread mill DC - TP / tan(profile angle /
    /// 2); chamfer and lollipop mill the smaller of DC and SFDM; slot mill the end of the shaft; else SFDM. DC where
    /// there is no SFDM, and where an angle of 0 leaves no answer.
    double getShoulderDiameter() const;
    /// Face and tapered mill DC + 2 tan(TA) LCF; radius mill DC + 2 RE; else DC.
    double getMaximumCutterDiameter() const;
    /// 0: none.
    double getUpperRadius() const;
    double getLowerRadius() const;
    /// 5 DC.
    double getProfileRadius() const;
    /// Height of the center of the profile radius R above the tip. Lens: R, for the center is on the axis. Else the
    /// profile touches the lower radius r, whose center is on the axis at r: r + sqrt((R - r)^2 - (R - DC / 2)^2), and
    /// 0 where there is no such circle.
    double getAxialDistance() const;
    /// 0.5 mm or 0.02 in.
    double getChamferWidth() const;
    /// 45 degrees.
    Angle getChamferAngle() const;
    /// The tip angle of a type that has one, else the taper angle.
    double getAngle() const { return hasTipAngle(m_type) ? m_cutting.tipAngle : m_cutting.taperAngle; }
    /// Gauge length of the holder that is attached, if any, + LB.
    virtual double getAssemblyGaugeLength() const;

    double getShaftDiameter() const { return m_cutting.shaftDiameter; }
    /// The diameter from which the outline of the holder starts: that of the shaft in it, 0 for a tool that is a
    /// holder.
    double getHolderDiameter() const { return isHolderOnly(m_type) ? 0 : m_cutting.shaftDiameter; }

    bool isCircleSegment() const { return isCircleSegmentTool(m_type); }
    bool isCornerChamferEndMill() const { return isCornerChamferEndMill(m_type); }

    // The holder, from the nose up. For a tool that is a holder the same outline, without being attached.
    bool hasHolder() const { return m_holder.attached; }
    const ToolHolder &holder() const { return m_holder; }
    ToolHolder &holder() { return m_holder; }
    const std::vector<ToolSection> &getHolder() const { return m_holder.sections; }
    /// An outline that is not empty attaches the holder, unless the tool is one.
    void setHolder(std::vector<ToolSection> sections);
    void attachHolder() { m_holder.attached = true; }
    void removeHolder(); ///< outline and GUID; what a catalogue says of it stays, for it comes with the parameters

    // The shaft above the shoulder.
    bool hasShaft() const { return !m_shaft.empty(); }
    const std::vector<ToolSection> &getShaft() const { return m_shaft; }
    void setShaft(std::vector<ToolSection> sections) { m_shaft = std::move(sections); }
    void removeShaft() { m_shaft.clear(); }

    // The tool block: the tool itself, or what a turning tool is attached to.
    bool hasAttachedToolBlock() const { return m_toolBlock.attached; }
    const ToolBlock &toolBlock() const { return m_toolBlock; }
    ToolBlock &toolBlock() { return m_toolBlock; }
    void attachToolBlock() { m_toolBlock.attached = true; }
    void removeToolBlock(); ///< GUID, solid and place; the rest stays, for it comes with the parameters
    const std::wstring &getMachineSideConnection() const { return m_toolBlock.machineSideConnectionType; }
    double getAdaptiveItemSize() const { return m_toolBlock.adaptiveItemSize; }
    ToolBlock::OrientationType getOrientationType() const { return m_toolBlock.orientationType; }
    int getNumberOfAttachmentPoints() const { return m_toolBlock.numberOfAttachmentPoints; }
    int getNumberOfToolAttachmentPoints() const { return m_toolBlock.numberOfTools; }

    // The outline of a form mill.
    const ToolProfile &getCustomCutter() const { return m_customCutter; }
    void setCustomCutter(ToolProfile profile) { m_customCutter = std::move(profile); }

    // The solid of the tool, and the nested one of the block that it is attached to. Raw is what is held, a placeholder
    // or a solid; the others are null for what is not of their kind.
    using Raw3DGeometry = std::shared_ptr<const Tool3DGeometryBase>;
    const Raw3DGeometry &getRaw3DGeometry() const { return m_geometry; }
    const Raw3DGeometry &getRawNested3DGeometry() const { return m_nestedGeometry; }
    std::shared_ptr<const Tool3DGeometry> getLoaded3DGeometry() const;
    std::shared_ptr<const Tool3DGeometry> getLoadedNested3DGeometry() const;
    std::shared_ptr<const ToolPlaceholder3DGeometry> getPlaceholder3DGeometry() const;
    std::shared_ptr<const ToolPlaceholder3DGeometry> getPlaceholderNested3DGeometry() const;
    void set3DGeometry(Raw3DGeometry geometry) { m_geometry = std::move(geometry); }
    void set3DGeometry(std::nullopt_t) { m_geometry.reset(); }
    void setNested3DGeometry(Raw3DGeometry geometry) { m_nestedGeometry = std::move(geometry); }
    void setNested3DGeometry(std::nullopt_t) { m_nestedGeometry.reset(); }

    // Each type but TYPE_NONE is of exactly one of these families.
    static bool isMill(Type type);
    static bool isDrill(Type type); ///< every hole making tool, also taps, reamers and boring heads
    static bool isProbe(Type type);
    static bool isJetCutter(Type type);
    static bool isTurning(Type type);
    static bool isDepositing(Type type);
    static bool isHolderOnly(Type type);
    static bool isToolBlockOnly(Type type);

    // Members of the mills.
    static bool isFormMill(Type type);
    static bool isCircleSegmentTool(Type type);
    static bool isCornerChamferEndMill(Type type);

    // Members of the drills; a tap is neither.
    static bool isGeneralHoleMaking(Type type); ///< fed straight in, with a feed per revolution
    static bool isBoringHoleMaking(Type type);  ///< fed with a plunge feedrate

    /// True when the angle of the geometry is a tip angle, false when it is a taper angle.
    static bool hasTipAngle(Type type);

    /// True when tools of the type may carry a solid of their own.
    static bool supports3DGeometry(Type type);

    /// The type of a keyword, compared exactly; "unspecified" is TYPE_NONE. Throws ToolLibraries::InvalidInput with the
    /// keyword in its text for an unknown one.
    static Type getToolTypeFromString(std::string_view keyword);
    static Type getToolTypeFromString(std::wstring_view keyword);

    /// The same, with TYPE_NONE for an unknown keyword.
    static Type getToolTypeFromStringNoThrow(std::string_view keyword);
    static Type getToolTypeFromStringNoThrow(std::wstring_view keyword);

    /// The keyword that stands under "type" in a tool map; "unspecified" for TYPE_NONE.
    static std::string getToolTypeAsString(Type type);

    /// The keyword that stands under "thread-tip-type" in a tool map.
    static std::string getThreadTipTypeAsString(ThreadTipType type);

    static bool isCustomInsert(InsertType type);

    /// The shape letter of ISO 1832, or 0 for an insert without one.
    static wchar_t insertTypeChar(InsertType type);

    /// The insert of a shape letter, in upper case; nothing for any other character.
    static std::optional<InsertType> insertTypeFromChar(wchar_t letter);

    /// Length of the cutting edge divided by the diameter of the inscribed circle: L = IC * factor, IC = L / factor.
    /// 1 for an insert whose edge does not follow from a circle (free, grooving and threading forms).
    static double insertTypeCuttingLengthToICFactor(InsertType type);

    /// The same factor for a rhombus of angle \a degrees: 1 / sin(angle). 1 outside of 0 < angle < 180.
    static double insertDiamondInsertCuttingLengthToICFactor(double degrees);

    /// Whether a holder of the style takes the insert on a turning tool of the type. HOLDER_NONE takes nothing.
    static bool doesSupportHolder(Type type, InsertType insert, HolderType holder);

private:
    Type m_type = TYPE_NONE;
    NCUnit::Unit m_unit = NCUnit::millimeters;
    ToolCuttingGeometry m_cutting;
    ToolJetGeometry m_jet;
    TurningToolParameterization m_turning;
    ToolHolder m_holder;
    std::vector<ToolSection> m_shaft;
    ToolBlock m_toolBlock;
    ToolProfile m_customCutter;
    Raw3DGeometry m_geometry;
    Raw3DGeometry m_nestedGeometry;
};

} // namespace Varn
