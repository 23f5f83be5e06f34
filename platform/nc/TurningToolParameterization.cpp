#include "platform/nc/TurningToolParameterization.h"

namespace Varn {

std::optional<ToolGeometryTypes::Hand> TurningToolParameterization::getHandFromChar(char letter)
{
    switch (letter) {
    case Types::HAND_LEFT:
    case Types::HAND_NEUTRAL:
    case Types::HAND_RIGHT:
        return static_cast<Types::Hand>(letter);
    default:
        return std::nullopt;
    }
}

char TurningToolParameterization::getHandAsChar(Types::Hand hand)
{
    switch (hand) {
    case Types::HAND_LEFT:
        return 'L';
    case Types::HAND_NEUTRAL:
        return 'N';
    case Types::HAND_RIGHT:
        break;
    }
    return 'R';
}

} // namespace Varn
