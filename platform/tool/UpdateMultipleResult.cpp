#include "platform/tool/UpdateMultipleResult.h"

namespace Varn::ToolLibraries {

std::string UpdateMultipleImpl::convert(const std::vector<const JSONSerializable *> &results)
{
    std::string json = "[";
    for (const JSONSerializable *result : results) {
        if (json.size() > 1)
            json += ',';
        json += result ? result->toJson() : std::string("null");
    }
    json += ']';
    return json;
}

} // namespace Varn::ToolLibraries
