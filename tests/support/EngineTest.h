// EngineTest.h -- the interface over a cache that a test fills, with what it reports of its use.
#pragma once

#include "support/FakeLibraryCache.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/Interface/APIUserInteraction.h"
#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"
#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"
#include "platform/core/Analytics.h"
#include "platform/core/Options.h"
#include "platform/tool/JsonText.h"

#include <gtest/gtest.h>

#include <mutex>

namespace TestSupport {

inline constexpr const wchar_t *libraryUrl = L"toollibraryroot://Local/a.json";
inline constexpr const wchar_t *otherUrl = L"toollibraryroot://Local/b.json";

/// Tracking is on while it lives, and validation off again afterwards.
template <typename Engine = Varn::ToolLibraries::ToolLibraryInterfaceImpl>
class EngineTest : public testing::Test
{
protected:
    using ToolId = Varn::ToolLibraries::ToolId;
    using ToolLibraryLocator = Varn::ToolLibraries::ToolLibraryLocator;
    using AnalyticsMgr = Varn::Analytics::ZETAnalyticsMgr;

    EngineTest()
        : m_cache(std::make_shared<FakeLibraryCache>()),
          m_engine(std::make_shared<Varn::ToolLibraries::ManageModeConfiguration>(), m_cache,
                   std::make_shared<Varn::ToolLibraries::APIUserInteraction>())
    {
        AnalyticsMgr::setSink([this](const QByteArray &line) {
            const auto report = Varn::ToolLibraries::JsonText::parse(line.toStdString()).value();
            const std::lock_guard lock(m_reportsMutex);
            m_reports.push_back(report["command"].asString() + " " +
                                Varn::ToolLibraries::JsonText::print(report["data"]));
        });
        AnalyticsMgr::setTrackingAllowed(true);
    }
    ~EngineTest() override
    {
        AnalyticsMgr::setTrackingAllowed(false);
        AnalyticsMgr::setSink({});
        Varn::Options::setEnableToolValidation(false);
    }

    static ToolId idOf(unsigned number) { return ToolId(guidOf(number)); }

    /// A file outside of the tree.
    ToolLibraryLocator looseFile(const char16_t *name, const std::string &text)
    {
        writeFile(m_paths.loose(name), text);
        return ToolLibraryLocator::fromFilePath(m_paths.loose(name).toStdWString());
    }

    TestPaths m_paths;
    std::shared_ptr<FakeLibraryCache> m_cache;
    Engine m_engine;
    std::mutex m_reportsMutex;          ///< held while a report comes in, which may be on any thread
    std::vector<std::string> m_reports; ///< "command data"
};

} // namespace TestSupport
