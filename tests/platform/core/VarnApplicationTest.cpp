#include "platform/core/VarnApplication.h"

#include "support/Asserts.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QStandardPaths>
#include <QTimer>

#include <gmock/gmock.h>

#include <array>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::VarnApplication;

namespace {

/// Sets a variable of the environment and puts the old value back.
class Environment
{
public:
    Environment(const char *name, std::optional<QByteArray> value) : m_name(name)
    {
        if (qEnvironmentVariableIsSet(name))
            m_old = qgetenv(name);
        set(value);
    }
    ~Environment() { set(m_old); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    void set(const std::optional<QByteArray> &value)
    {
        if (value)
            qputenv(m_name, *value);
        else
            qunsetenv(m_name);
    }

    const char *m_name;
    std::optional<QByteArray> m_old;
};

class Folders : public testing::Test
{
protected:
    ~Folders() override { VarnApplication::setHomeFolder(L""); }

    Environment m_noHome{"QUILLON_HOME", std::nullopt};
};

/// Runs the event loop until everything posted so far has been served.
void serveEvents()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

} // namespace

TEST(MainThread, JobsOfOtherThreadsRunOnTheEventLoopInOrder)
{
    std::vector<int> ran;
    std::vector<bool> onMainThread;
    const auto mainThread = std::this_thread::get_id();
    std::jthread([&] {
        for (int i = 0; i < 5; ++i) {
            VarnApplication::runOnMainThread([&, i] {
                ran.push_back(i);
                onMainThread.push_back(std::this_thread::get_id() == mainThread);
            });
        }
    }).join();
    EXPECT_THAT(ran, IsEmpty());
    serveEvents();
    EXPECT_THAT(ran, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(onMainThread, testing::Each(true));
}

TEST(MainThread, AJobFromTheMainThreadWaitsForTheLoopToo)
{
    bool ran = false;
    VarnApplication::runOnMainThread([&] { ran = true; });
    EXPECT_FALSE(ran);
    serveEvents();
    EXPECT_TRUE(ran);
}

TEST(MainThread, AHostWithoutALoopPumpsByHand)
{
    std::vector<int> ran;
    for (int i = 0; i < 3; ++i)
        VarnApplication::runOnMainThread([&ran, i] { ran.push_back(i); });
    EXPECT_EQ(VarnApplication::pumpMainThread(), 3u);
    EXPECT_THAT(ran, ElementsAre(0, 1, 2));
    EXPECT_EQ(VarnApplication::pumpMainThread(), 0u);
    serveEvents();
    EXPECT_THAT(ran, ElementsAre(0, 1, 2)) << "no job runs twice";
}

TEST(MainThread, AJobMayWaitForNothingButPostMore)
{
    std::vector<int> ran;
    VarnApplication::runOnMainThread([&] {
        ran.push_back(1);
        VarnApplication::runOnMainThread([&] { ran.push_back(3); });
    });
    VarnApplication::runOnMainThread([&] { ran.push_back(2); });
    EXPECT_EQ(VarnApplication::pumpMainThread(), 2u);
    EXPECT_EQ(VarnApplication::pumpMainThread(), 1u);
    EXPECT_THAT(ran, ElementsAre(1, 2, 3));
    serveEvents();
}

TEST(MainThread, AnExceptionEndsOnlyItsOwnJob)
{
    const TestSupport::Asserts asserts;
    std::vector<int> ran;
    VarnApplication::runOnMainThread([] { throw std::runtime_error("lost"); });
    VarnApplication::runOnMainThread([&] { ran.push_back(1); });
    VarnApplication::runOnMainThread([] { throw 7; });
    VarnApplication::runOnMainThread([&] { ran.push_back(2); });
    serveEvents();
    EXPECT_THAT(ran, ElementsAre(1, 2));
    EXPECT_EQ(asserts.messages().size(), 2u);
}

TEST(MainThread, AnExceptionIsHarmlessInAHostToo)
{
    VarnApplication::runOnMainThread([] { throw std::runtime_error("lost"); });
    EXPECT_EQ(VarnApplication::pumpMainThread(), 1u);
    serveEvents();
}

TEST(MainThread, AJobWithALoopOfItsOwnLetsTheOthersRun)
{
    std::vector<int> ran;
    bool timedOut = false;
    VarnApplication::runOnMainThread([&] {
        QEventLoop dialog;
        QTimer::singleShot(5000, &dialog, [&] {
            timedOut = true;
            dialog.quit();
        });
        VarnApplication::runOnMainThread([&] {
            ran.push_back(3);
            dialog.quit();
        });
        ran.push_back(1);
        dialog.exec();
        ran.push_back(4);
    });
    VarnApplication::runOnMainThread([&] { ran.push_back(2); });
    serveEvents();
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
    EXPECT_FALSE(timedOut);
}

TEST(MainThread, JobsOfEachThreadKeepTheirOrder)
{
    constexpr std::size_t count = 200;
    std::array<std::vector<std::size_t>, 4> ran;
    {
        std::vector<std::jthread> threads;
        for (auto &own : ran) {
            threads.emplace_back([&own] {
                for (std::size_t i = 0; i < count; ++i)
                    VarnApplication::runOnMainThread([&own, i] { own.push_back(i); });
            });
        }
    }
    serveEvents();
    for (const auto &own : ran) {
        ASSERT_EQ(own.size(), count);
        EXPECT_TRUE(std::is_sorted(own.begin(), own.end()));
    }
}

TEST(MainThread, AnEmptyJobIsAFault)
{
    const TestSupport::Asserts asserts;
    VarnApplication::runOnMainThread({});
    EXPECT_EQ(VarnApplication::pumpMainThread(), 0u);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:job"));
}

TEST(MainThread, OnlyTheMainThreadMayPump)
{
    const TestSupport::Asserts asserts;
    std::jthread([] { VarnApplication::pumpMainThread(); }).join();
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:Thread::isMainThread()"));
}

TEST_F(Folders, FollowTheXdgBaseDirectories)
{
    const Environment data("XDG_DATA_HOME", "/tmp/of anna/data/");
    EXPECT_EQ(VarnApplication::getPerUserFolder(), L"/tmp/of anna/data");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/of anna/data/quillon");
}

TEST_F(Folders, FallBackToTheHomeOfThePerson)
{
    const Environment home("HOME", "/home/anna");
    for (const std::optional<QByteArray> &unusable :
         {std::optional<QByteArray>(), std::optional<QByteArray>(""), std::optional<QByteArray>("relative/data")}) {
        const Environment data("XDG_DATA_HOME", unusable);
        EXPECT_EQ(VarnApplication::getPerUserFolder(), L"/home/anna/.local/share") << unusable.value_or("unset").data();
        EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/home/anna/.local/share/quillon");
    }
}

TEST_F(Folders, OutputGoesToTheDocumentsOfThePerson)
{
    const Environment home("HOME", "/tmp/nobody");
    const Environment config("XDG_CONFIG_HOME", "/tmp/nobody/.config");
    EXPECT_EQ(VarnApplication::getDefaultOutputFolder(), L"/tmp/nobody/Documents");
}

TEST_F(Folders, AHomeFromTheEnvironmentHoldsEverything)
{
    const Environment home("QUILLON_HOME", "/tmp/shop floor/");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/shop floor");
    EXPECT_EQ(VarnApplication::getPerUserFolder(), L"/tmp/shop floor");
    EXPECT_EQ(VarnApplication::getDefaultOutputFolder(), L"/tmp/shop floor/Documents");
}

TEST_F(Folders, TheEnvironmentIsReadAtEachCall)
{
    {
        const Environment home("QUILLON_HOME", "/tmp/one");
        EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/one");
    }
    const Environment home("QUILLON_HOME", "/tmp/two");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/two");
}

TEST_F(Folders, AHomeThatIsSetOverrulesTheEnvironment)
{
    const Environment home("QUILLON_HOME", "/tmp/environment");
    VarnApplication::setHomeFolder(L"/tmp/\u00FCber/./set/");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/\u00FCber/set");
    EXPECT_EQ(VarnApplication::getDefaultOutputFolder(), L"/tmp/\u00FCber/set/Documents");
    VarnApplication::setHomeFolder(L"");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/environment");
}

TEST_F(Folders, ARelativeHomeCountsFromTheCurrentFolder)
{
    const std::wstring current = QDir::currentPath().toStdWString();
    VarnApplication::setHomeFolder(L"home");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), current + L"/home");
}

TEST_F(Folders, AnEmptyHomeInTheEnvironmentIsNone)
{
    const Environment home("QUILLON_HOME", "");
    const Environment data("XDG_DATA_HOME", "/tmp/data");
    EXPECT_EQ(VarnApplication::getAppDataFolder(), L"/tmp/data/quillon");
}

TEST_F(Folders, NoMachineOnlyStreams)
{
    EXPECT_FALSE(VarnApplication::isAppStreamMachine());
}
