// StartBench.cpp -- what it costs to start with many libraries, and how long one of them is waited for meanwhile.
#include "Bare.h"
#include "Libraries.h"
#include "Measure.h"
#include "Trees.h"

#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "platform/utils/Abortable.h"

#include <atomic>
#include <filesystem>
#include <thread>

namespace Bench {

using namespace Varn::ToolLibraries;
using Varn::Tools::ToolLibraryUrl;

namespace {

constexpr std::size_t manyLibraries = 200;
constexpr std::size_t toolsOfEach = 500;
constexpr std::size_t bigTools = 100'000;

/// Copies of one library under as many names.
std::vector<std::wstring> manyUrls()
{
    const std::filesystem::path original = libraryFile(toolsOfEach);
    std::vector<std::wstring> urls;
    for (std::size_t i = 0; i < manyLibraries; ++i) {
        const std::string name = "start" + std::to_string(i) + ".json";
        std::filesystem::copy_file(original, original.parent_path() / name,
                                   std::filesystem::copy_options::skip_existing);
        urls.push_back(L"toollibraryroot://Local/" + std::wstring(name.begin(), name.end()));
    }
    return urls;
}

/// A second name for the big library, so that every thread has one to load.
std::wstring secondBigUrl()
{
    const std::filesystem::path original = libraryFile(bigTools);
    const std::filesystem::path second = original.parent_path() / "second.json";
    if (!std::filesystem::exists(second))
        std::filesystem::create_hard_link(original, second);
    return L"toollibraryroot://Local/second.json";
}

void waitForThreads()
{
    while (LoadThreads::ofFiles().count() > 0)
        std::this_thread::yield();
}

/// Two threads parse the bytes of all libraries.
void parseOnTwoThreads(const std::string &bytes)
{
    std::atomic<std::size_t> next{0};
    std::vector<rapidjson::Document> documents(manyLibraries);
    const auto work = [&] {
        for (std::size_t i = next++; i < manyLibraries; i = next++)
            parseBare(bytes, documents[i]);
    };
    std::thread other(work);
    work();
    other.join();
}

void benchStart()
{
    const std::vector<std::wstring> urls = manyUrls();
    const std::string bytes = libraryBytes(toolsOfEach);
    const Work ours = [&] {
        const auto cache = cacheOf(urls);
        for (const std::wstring &url : urls)
            cache->getLoadedLibrary(ToolLibraryUrl(QString::fromStdWString(url)));
    };
    printRatio("start with 200 libraries", toolsOfEach,
               measurePair(
                   ours, [&] { parseOnTwoThreads(bytes); }, 6),
               "two threads parse them", 1.25);
}

/// The time until a small library is there, right after the cache was made.
void benchWait()
{
    const std::wstring small = libraryUrl(toolsOfEach);
    const std::vector<std::wstring> all{libraryUrl(bigTools), secondBigUrl(), small};
    const ToolLibraryUrl wanted(QString::fromStdWString(small));
    std::shared_ptr<ToolLibraryCacheInMemory> cache;
    const auto waitWith = [&](const std::vector<std::wstring> &urls) {
        cache = cacheOf(urls);
        cache->getLoadedLibrary(wanted);
    };
    const auto end = [&] {
        cache->initialLoadTask()->abort();
        waitForThreads();
    };
    Pair best{1e9, 1e9};
    for (int round = 0; round < 20; ++round) {
        best.ours = std::min(best.ours, secondsOf([&] { waitWith(all); }));
        end();
        best.bare = std::min(best.bare, secondsOf([&] { waitWith({small}); }));
        end();
    }
    printRatio("one while 100,000 tools load", toolsOfEach, best, "the same alone", 3);
}

} // namespace

void benchStartUp()
{
    benchStart();
    benchWait();
}

} // namespace Bench
