// RefreshHubLibrariesResult.h -- what a refresh of the hub's libraries brought. A value, any thread.
#pragma once

#include "platform/tool/UpdateNodeResult.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT RefreshHubLibrariesResult : public JSONSerializable
{
public:
    /// \param lastSyncTime seconds since 1970-01-01 UTC, 0 when there was no refresh yet
    RefreshHubLibrariesResult(const UpdateNodesResult &nodes, double lastSyncTime);

    const UpdateNodesResult &nodes() const { return m_nodes; }
    double lastSyncTime() const { return m_lastSyncTime; }

    /// {"nodes":[{"item","error"}], "lastSyncTime": seconds}
    std::string toJson() const override;

private:
    UpdateNodesResult m_nodes;
    double m_lastSyncTime;
};

} // namespace Varn::ToolLibraries
