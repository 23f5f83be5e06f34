#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/LibraryFile.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <latch>
#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;

namespace {

constexpr unsigned numberOfTools = 60;

std::string toolOf(unsigned number)
{
    return toolText(number, R"("type":"drill","description":"no. )" + std::to_string(number) +
                                R"(","geometry":{"DC":)" + std::to_string(number) + ".5}");
}

std::shared_ptr<const RapidjsonToolLibrary> makeLibrary()
{
    std::vector<std::string> tools;
    for (unsigned number = 1; number <= numberOfTools; ++number)
        tools.push_back(toolOf(number));
    return RapidjsonToolLibrary::fromString(libraryText(tools), Varn::AbortableImpl());
}

bool isTool(const Tool &tool, unsigned number)
{
    return tool.toJson() == toolOf(number) && tool.getToolId() == ToolId(guidOf(number)) && tool.getType() == "drill" &&
           tool.getDouble("tool_diameter") == number + 0.5 &&
           tool.getToolValue()["description"].asString() == "no. " + std::to_string(number);
}

/// Everything that a reader can ask; how many answers were wrong.
int wrongAnswers(const RapidjsonToolLibrary &library)
{
    int wrong = 0;
    unsigned number = 0;
    for (auto at = library.begin(); at != library.end(); ++at)
        wrong += isTool(**at, ++number) ? 0 : 1;
    wrong += number == numberOfTools ? 0 : 1;
    const std::vector<ToolId> ids = library.getToolIds();
    for (number = 1; number <= numberOfTools; ++number) {
        const auto tool = library.get(ids.at(number - 1));
        wrong += tool && isTool(**tool, number) ? 0 : 1;
    }
    wrong += library.get(ToolId(guidOf(999))) ? 1 : 0;
    wrong += library.getVersion() == 36 && library.numberOfTools() == numberOfTools ? 0 : 1;
    wrong += library.toQVariantMap()["data"].toList().size() == int(numberOfTools) ? 0 : 1;
    return wrong + (library.toJson().size() > 100 * numberOfTools ? 0 : 1);
}

} // namespace

TEST(RapidjsonToolLibraryThreads, MayReadOneLibraryAtOnce)
{
    constexpr int numberOfThreads = 4;
    const auto library = makeLibrary();
    std::latch start(numberOfThreads);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < numberOfThreads; ++thread)
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < 5; ++round)
                wrong += wrongAnswers(*library);
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(RapidjsonToolLibraryThreads, MayShareOneToolOfALibrary)
{
    constexpr int numberOfThreads = 4;
    const auto library = makeLibrary();
    const std::shared_ptr<Tool> taken = library->get(ToolId(guidOf(1))).value();
    const std::unique_ptr<const Tool> view = *library->begin();
    std::latch start(numberOfThreads);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < numberOfThreads; ++thread)
        threads.emplace_back([&] {
            start.arrive_and_wait();
            wrong += isTool(*taken, 1) && isTool(*view, 1) && isTool(*view->clone(), 1) ? 0 : 1;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
