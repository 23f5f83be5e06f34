// ToolSpecification.h -- the host's record of a tool, and what is known of types, inserts and holders by name and by
// value.
//
// A record is for one thread at a time. The static operations are stateless and for any thread: a value that is no
// enumerator is taken as the value 0 of its enumeration; keywords are compared exactly, as wide text or as UTF-8, and
// lookups by keyword allocate nothing.
#pragma once

#include "platform/core/PresetMaterialTypes.h"
#include "platform/core/Strategy.h"
#include "platform/core/ToolFeedsAndSpeeds.h"
#include "platform/core/ToolFeedsAndSpeedsPresetId.h"
#include "platform/nc/NCTool.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/nc/ToolTexts.h"
#include "platform/ox/XMLNode.h"
#include "platform/ox/expected.h"
#include "platform/utils/LocalizedMessage.h"
#include "util/utility/Validified.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Varn {

class ParameterTable;
class ToolError;
class ToolFeedsAndSpeedsPreset;

using ToolPresets = std::vector<std::shared_ptr<const ToolFeedsAndSpeedsPreset>>;

/// A value: a copy is independent. Presets and solids are immutable, so copies share them.
class VARN_PLATFORM_EXPORT ToolSpecification : public ToolGeometry, public PresetMaterialTypes
{
public:
    using FeedMode = ToolFeedMode;
    static constexpr FeedMode FEED_PER_MINUTE = Varn::FEED_PER_MINUTE;
    static constexpr FeedMode FEED_PER_REVOLUTION = Varn::FEED_PER_REVOLUTION;

    using Expressions = std::map<std::wstring, std::wstring>;
    using Errors = std::vector<std::shared_ptr<ToolError>>;

    /// How closely two records are compared. By default everything that a record holds counts.
    struct ComparisonOptions {
        enum Identity : int {
            IDENTITY_COMPARED = 0, ///< the GUIDs of tool, holder and block, and the ids of presets and solids
            IDENTITY_IGNORED = 1,
        };

        /// By how much two numbers may differ. Values that have come through a table of parameters have six decimals;
        /// this is half of the last one.
        double tolerance = 5e-7;
        Identity identity = IDENTITY_COMPARED;
        /// Whether the current values of feeds and speeds count, which are a working copy of whichever preset was
        /// selected; they do unless this is false.
        std::optional<bool> currentValues;
    };

    /// Finds a solid by its id, null when there is none. Called without any lock, on the thread that restores.
    using Tool3DGeometryResolver = std::function<Raw3DGeometry(const std::wstring &id)>;

    ToolSpecification();
    ToolSpecification(const ToolSpecification &);
    ToolSpecification(ToolSpecification &&) noexcept;
    ToolSpecification &operator=(const ToolSpecification &);
    ToolSpecification &operator=(ToolSpecification &&) noexcept;
    ~ToolSpecification() override;

    // Identity: a GUID as text, kept as it came; empty for none.
    const std::wstring &getGUID() const { return m_guid; }
    void setGUID(std::wstring guid) { m_guid = std::move(guid); }
    void resetGUID(); ///< a new random one, 36 characters in lower case

    std::wstring getToolTypeAsWideString() const { return getToolTypeAsWideString(getType()); }

    // What is known of it beside its shape.
    const ToolTexts &texts() const { return m_texts; }
    ToolTexts &texts() { return m_texts; }
    const NCTool &nc() const { return m_nc; }
    NCTool &nc() { return m_nc; }
    void setCutterDiameter(double diameter) { cutting().diameter = diameter; }

    /// Everything in the other unit: lengths, feeds, pressures and flows, also of the presets. Angles, counts and texts
    /// stay, and so do expressions, which are texts. Numbers of up to 15 digits come back exactly.
    void convertToUnit(NCUnit::Unit unit);

    // The feeds and speeds that the tool works with at the moment, and its presets.
    const ToolFeedsAndSpeeds &currentValues() const { return m_currentValues; }
    ToolFeedsAndSpeeds &currentValues() { return m_currentValues; }
    bool hasPresets() const { return !m_presets.empty(); }
    const ToolPresets &getPresets() const { return m_presets; }
    void setPresets(ToolPresets presets); ///< null ones are left out
    void addPreset(std::shared_ptr<const ToolFeedsAndSpeedsPreset> preset);
    /// Null when there is none of that id; of several the first.
    std::shared_ptr<const ToolFeedsAndSpeedsPreset> getPreset(const ToolLibraries::PresetId &id) const;
    /// The one that was set, if it is still there, else the first; nothing without presets.
    std::optional<ToolFeedsAndSpeedsPresetId> getDefaultPresetId() const;
    void setDefaultPresetId(std::optional<ToolFeedsAndSpeedsPresetId> id) { m_defaultPresetId = std::move(id); }

    // Expressions that a person gave, from parameter name to text.
    const Expressions &getExpressions() const { return m_expressions; }
    /// Adds or replaces one; without a text it is removed.
    void setExpression(const std::wstring &name, std::optional<std::wstring> expression);

    // Faults that were found in the tool. They never change, so copies share them. Neither a table of parameters nor
    // the XML form holds them.
    const Errors &getErrors() const { return m_errors; }
    void setErrors(Errors errors) { m_errors = std::move(errors); }

    // What is attached. For a tool that is a holder or a block itself: its own GUID, texts, comment and live flag.
    void setHolderGUID(std::wstring guid) { holder().guid = std::move(guid); }
    const std::wstring &getHolderGUID() const { return isHolder() ? m_guid : holder().guid; }
    const std::wstring &getHolderDescription() const { return holderTexts().description; }
    const std::wstring &getHolderVendor() const { return holderTexts().vendor; }
    const std::wstring &getHolderProductId() const { return holderTexts().productId; }
    const std::wstring &getHolderProductLink() const { return holderTexts().productLink; }
    void setToolBlockGUID(std::wstring guid) { toolBlock().guid = std::move(guid); }
    const std::wstring &getToolBlockGUID() const { return isBlock() ? m_guid : toolBlock().guid; }
    const std::wstring &getToolBlockDescription() const { return blockTexts().description; }
    const std::wstring &getToolBlockVendor() const { return blockTexts().vendor; }
    const std::wstring &getToolBlockProductId() const { return blockTexts().productId; }
    const std::wstring &getToolBlockProductLink() const { return blockTexts().productLink; }
    const std::wstring &getToolBlockComment() const { return isBlock() ? m_nc.comment : toolBlock().comment; }
    bool getToolBlockLive() const { return isBlock() ? m_nc.live : toolBlock().live; }

    /// Puts the solids in the place of placeholders, of the tool and of its block, as far as the resolver finds them.
    void restore3DGeometry();
    /// Sets what finds the solids, for all records of the process. Any thread.
    static void set3DGeometryResolver(Tool3DGeometryResolver resolver);

    /// To be called before a record is filled anew: forgets what filling adds to rather than replaces, namely
    /// expressions, faults, solids, the outline of a form mill, and what is attached.
    void invalidate();

    bool isSame(const ToolSpecification &other, const ComparisonOptions &options) const;

    // Parameters. The tables are those of the type's strategy.
    /// A table with the values of the record, and if \a withExpressions its expressions.
    ParameterTable createParameterTable(bool withExpressions = false) const;
    /// Takes over type, unit and the values of all parameters that \a table has; if \a withExpressions, also as
    /// expressions what was set there over names of other parameters, while parameters that have something else there
    /// lose theirs. What no parameter holds stays: GUIDs, outlines, solids, presets; but what is no longer attached
    /// loses its outline, GUID and solid.
    void syncFromParameters(const ParameterTable &table, bool withExpressions = false);
    /// The other way. Parameters that the record says nothing of keep what they have. Expressions bring the cones of
    /// the holder along as numbered parameters ("segment_1_height"), of which they may speak.
    void syncToParameters(ParameterTable &table, bool withExpressions = false) const;

    /// Names and values of all fields in two lines of columns with tabs between them, for a spreadsheet; the second
    /// line alone without \a withNames. Tabs and line ends in texts become blanks.
    std::wstring getAsTabbedValues(bool withNames) const;

    /// Writes the whole record into an element, whose attributes and children are its own. docs/tool-xml.md tells the
    /// layout.
    void exportTo(Ox::XMLNode node) const;
    /// Reads what exportTo() has written; solids come back as placeholders. What is missing has its default, unknown
    /// members are passed over. An error, which names element and member, for a value that is none; the record stays
    /// as it was then.
    Ox::expected<void, std::string> importFrom(const Ox::XMLNode &node);

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

private:
    bool isHolder() const { return isHolderOnly(getType()); }
    bool isBlock() const { return isToolBlockOnly(getType()); }
    const ToolTexts &holderTexts() const { return isHolder() ? m_texts : holder().texts; }
    const ToolTexts &blockTexts() const { return isBlock() ? m_texts : toolBlock().texts; }

    std::wstring m_guid;
    ToolTexts m_texts;
    NCTool m_nc;
    ToolFeedsAndSpeeds m_currentValues;
    ToolPresets m_presets;
    std::optional<ToolFeedsAndSpeedsPresetId> m_defaultPresetId;
    Expressions m_expressions;
    Errors m_errors;
};

} // namespace Varn
