// GuidUtil.h -- makes GUIDs, and the stable ones of document tools. Any thread, but for the generator of tests.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolId.h"

#include <QString>
#include <QUuid>
#include <QVariant>

#include <memory>

namespace Varn {

class TOOL_LIBRARY_EXPORT GuidUtil
{
public:
    /// Lets a test say which GUIDs are made.
    class TOOL_LIBRARY_EXPORT GuidGenerator
    {
    public:
        virtual ~GuidGenerator();
        virtual QString operator()() = 0;
    };

    /// A new GUID without braces.
    static QString createGuid();

    /// The GUID that stands for a document tool without one of its own: always the same for one index. With braces.
    static QString fakeGuid(unsigned int index);
    static ToolLibraries::ToolId documentToolIndexToToolId(unsigned int index);

    /// From the bytes of \a variant; null when they are no GUID.
    static QUuid toQUuid(const QVariant &variant);

    /// The text without braces.
    static QString trimGuid(const QUuid &uuid);

    /// Installs what createGuid asks while the platform is under test, and returns what stood there before. Only from
    /// the test's own thread.
    static std::unique_ptr<GuidGenerator> setTestGuidGenerator(std::unique_ptr<GuidGenerator> generator);

private:
    static std::unique_ptr<GuidGenerator> s_testGuidGenerator;
};

} // namespace Varn
