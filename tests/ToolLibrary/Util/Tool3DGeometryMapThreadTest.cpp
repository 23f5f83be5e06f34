// Tool3DGeometryMap on many threads; run under ThreadSanitizer by "./dev check".
#include "ToolLibrary/Util/Tool3DGeometryMap.h"

#include "support/GeometryTest.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace TestSupport;
using namespace Varn;

namespace {

class Tool3DGeometryMapThreadTest : public GeometryTest
{
protected:
    template <typename Job>
    static void onThreads(int count, const Job &job)
    {
        std::vector<std::thread> threads;
        for (int i = 0; i < count; ++i)
            threads.emplace_back(job, i);
        for (std::thread &thread : threads)
            thread.join();
    }
};

} // namespace

TEST_F(Tool3DGeometryMapThreadTest, AllWhoAskForASolidGetTheSameOne)
{
    put(fileOf(local, L"id"), geometryFile(std::string(500'000, 'x')));
    for (int round = 0; round < 20; ++round) {
        Map::syncLibraries({{local, {L"id"}}});
        std::vector<std::shared_ptr<const ToolSLDGeometry>> solids(4);
        onThreads(4, [&](int i) { solids[static_cast<std::size_t>(i)] = Map::getLoaded3DGeometry(L"id"); });
        for (const auto &solid : solids)
            EXPECT_EQ(solid, solids[0]);
        EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), solids[0]);
        ASSERT_TRUE(solids[0]);
    }
}

TEST_F(Tool3DGeometryMapThreadTest, EveryLocationArrives)
{
    onThreads(4, [&](int thread) {
        for (int i = 0; i < 200; ++i)
            Map::emplace(std::to_wstring(i), placeholder(std::to_wstring(i)),
                         Url(QStringLiteral("custom://%1/a.json").arg(thread)));
    });
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(Map::getLocations(std::to_wstring(i)).size(), 4U);
    Map::syncLibraries({});
}

TEST_F(Tool3DGeometryMapThreadTest, OperationsMeetAWholeTable)
{
    for (int i = 0; i < 20; ++i)
        put(fileOf(local, std::to_wstring(i)));
    std::set<std::wstring> ids;
    for (int i = 0; i < 20; ++i)
        ids.insert(std::to_wstring(i));
    std::atomic<int> wrong{0};
    onThreads(4, [&](int thread) {
        for (int round = 0; round < 50; ++round) {
            const std::wstring id = std::to_wstring(round % 20);
            switch (thread) {
            case 0:
                Map::populateFromLibraryUrl(sameFolder);
                break;
            case 1:
                Map::syncLibraries({{local, ids}});
                break;
            case 2:
                if (const auto solid = Map::getLoaded3DGeometry(id); solid && solid->id() != id)
                    ++wrong;
                break;
            default:
                Map::emplace(id, makeGeometry(id), cloud);
                if (Map::has(id) && Map::isEmpty())
                    continue; // a sync between the two
                Map::getLocations(id);
            }
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(namesIn(folderOf(local)).size(), 21U) << "no file in use went";
}
