// HubLibraryRefreshResult.h -- what one phase of a refresh of the hub's libraries brought. A value whose copies share
// the nodes; one object is not for two threads at once.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/ox/HubLibrariesCache.h"
#include "platform/ox/Status.h"
#include "platform/tool/LibraryMetadata.h"

#include <gsl/gsl>

#include <QList>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Varn::LibrariesPlatform {

/// Nodes and tools, or the failure that stood in their way, or neither. Warnings may come with either.
class VARN_PLATFORM_EXPORT HubLibraryRefreshResult
{
public:
    using Nodes = std::vector<std::shared_ptr<ToolLibraries::LibraryMetadata>>;
    using Failure = Ox::HubLibrariesCache::Exception;

    /// Neither a value nor an error.
    HubLibraryRefreshResult() = default;

    /// \param libraryTools one map per library: "folderId", and "tools" as a list of tool maps
    explicit HubLibraryRefreshResult(Nodes libraryNodes, QList<QVariant> libraryTools = {});

    explicit HubLibraryRefreshResult(const gsl::not_null<std::shared_ptr<Failure>> &error);

    bool hasValue() const { return m_hasValue; }
    bool hasError() const { return m_error != nullptr; }
    bool hasWarnings() const { return m_status.hasWarnings(); }

    /// Empty without a value.
    const Nodes &libraryNodes() const { return m_libraryNodes; }
    const QList<QVariant> &libraryTools() const { return m_libraryTools; }

    /// What the hub said on the way. Starts out well, also where there is an error: that one is not repeated in it.
    const Ox::Status &status() const { return m_status; }
    Ox::Status &status() { return m_status; }

    /// REQUIRES: hasError(). Otherwise a failure without a cause.
    const Failure &error() const;

    /// Adds a warning to the status; \a code is for programs, \a message for the person at the screen.
    void addWarning(const QString &message, const QString &code);

private:
    bool m_hasValue = false;
    Nodes m_libraryNodes;
    QList<QVariant> m_libraryTools;
    std::shared_ptr<Failure> m_error;
    Ox::Status m_status;
};

} // namespace Varn::LibrariesPlatform
