// RecordUnits.h -- the numbers of a record in the other unit. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/NCUnit.h"
#include "platform/nc/RecordField.h"
#include "platform/nc/ToolProfile.h"
#include "platform/nc/ToolSection.h"
#include "platform/utils/Matrix.h"

#include <optional>
#include <type_traits>
#include <vector>

namespace Varn {

/// \a value of a tool in \a from as one of a tool in \a to. Inches are multiplied by 25.4 and millimeters divided by
/// it; a number of up to 15 digits comes back from the other unit exactly. 1 in is 25.4 mm, 1 lb 453.59237 g, 1 lbf
/// that mass at 9.80665 m/s^2, all exact by definition.
VARN_PLATFORM_EXPORT double inUnit(double value, FieldQuantity quantity, NCUnit::Unit from, NCUnit::Unit to);

// Every length of these.
VARN_PLATFORM_EXPORT std::vector<ToolSection> inUnit(std::vector<ToolSection> sections, NCUnit::Unit from,
                                                     NCUnit::Unit to);
VARN_PLATFORM_EXPORT ToolProfile inUnit(ToolProfile profile, NCUnit::Unit from, NCUnit::Unit to);
VARN_PLATFORM_EXPORT Matrix4x4 inUnit(const Matrix4x4 &motion, NCUnit::Unit from, NCUnit::Unit to);

/// Every number of \a part that the unit changes, over a table of its fields.
template <typename Part, typename Fields>
void convertFields(Part &part, const Fields &fields, NCUnit::Unit from, NCUnit::Unit to)
{
    const auto convert = [&](const auto &field) {
        auto &member = part.*field.member;
        using Member = std::remove_reference_t<decltype(member)>;
        if constexpr (std::is_same_v<Member, double>) {
            member = inUnit(member, field.quantity, from, to);
        } else if constexpr (std::is_same_v<Member, std::optional<double>>) {
            if (member)
                member = inUnit(*member, field.quantity, from, to);
        }
    };
    std::apply([&](const auto &...field) { (convert(field), ...); }, fields);
}

} // namespace Varn
