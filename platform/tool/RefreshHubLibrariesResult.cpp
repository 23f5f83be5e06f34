#include "platform/tool/RefreshHubLibrariesResult.h"

#include "platform/tool/JsonText.h"

namespace Varn::ToolLibraries {

RefreshHubLibrariesResult::RefreshHubLibrariesResult(const UpdateNodesResult &nodes, double lastSyncTime)
    : m_nodes(nodes), m_lastSyncTime(lastSyncTime)
{
}

std::string RefreshHubLibrariesResult::toJson() const
{
    std::string json = "{\"nodes\":" + m_nodes.toJson() + ",\"lastSyncTime\":";
    JsonText::print(Json::Value(m_lastSyncTime), json);
    json += '}';
    return json;
}

} // namespace Varn::ToolLibraries
