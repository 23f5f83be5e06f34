#include "ToolLibrary/Interface/Factory.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakeLibraryCache.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/Interface/APIUserInteraction.h"
#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"
#include "platform/core/VarnDocument.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn;
using namespace Varn::ToolLibraries;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Factory::Args argsWith(std::shared_ptr<ToolLibraryCache> cache)
{
    Factory::Args args;
    args.cache = std::move(cache);
    return args;
}

std::optional<std::wstring> activeUrl(const ToolLibraryInterface &engine)
{
    const auto active = engine.getActiveDocumentUrl();
    return active ? std::optional(active->url()) : std::nullopt;
}

std::wstring urlOf(const VarnDocument &document)
{
    return ToolLibraryLocator(Tools::CamDocuments::urlOf(document)).url();
}

} // namespace

TEST(Factory, MakesAnInterfaceOverTheCacheThatItIsGiven)
{
    const auto cache = std::make_shared<FakeLibraryCache>();
    cache->add(L"toollibraryroot://Local/a.json", R"({"data":[]})");
    const Asserts asserts;
    const auto engine = Factory::make(argsWith(cache));
    EXPECT_THAT(engine->getAllLibraryUrls(), ElementsAre(ToolLibraryLocator(L"toollibraryroot://Local/a.json")));
    EXPECT_TRUE(cache->documents()) << "the cache is told where documents come from";
    EXPECT_EQ(cache->refreshes(), 1);
    EXPECT_FALSE(engine->getActiveDocumentUrl().has_value());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(Factory, WithoutACacheMakesOneOfThePersonsTree)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/mine.json"), libraryText({toolText(1)}));
    const ToolLibraryLocator mine(L"toollibraryroot://Local/mine.json");
    {
        const auto engine = Factory::make(Factory::Args());
        EXPECT_THAT(engine->getAllLibraryUrls(), Contains(mine));
        EXPECT_EQ(engine->getToolsFromLibrary(mine).size(), 1u);
        EXPECT_EQ(Factory::make(Factory::Args()), engine);
    }
    const auto engine = Factory::make(nullptr, nullptr, std::make_shared<ManageModeConfiguration>(), std::nullopt,
                                      std::make_shared<APIUserInteraction>());
    EXPECT_THAT(engine->getAllLibraryUrls(), Contains(mine));
}

TEST(Factory, GivesTheLivingInterfaceAgain)
{
    const auto cache = std::make_shared<FakeLibraryCache>();
    const auto engine = Factory::make(argsWith(cache));
    const auto other = std::make_shared<FakeLibraryCache>();
    EXPECT_EQ(Factory::make(argsWith(other)), engine);
    EXPECT_EQ(engine->initialLoadTask(), cache->initialLoadTask()) << "the first cache stays";
    EXPECT_EQ(other.use_count(), 1);
    EXPECT_FALSE(other->documents());
    EXPECT_EQ(other->refreshes(), 0);
    EXPECT_EQ(cache->refreshes(), 2) << "documents are listed anew at each call";
}

TEST(Factory, StartsOverWhenTheLastPointerIsGone)
{
    auto cache = std::make_shared<FakeLibraryCache>();
    const std::weak_ptr<FakeLibraryCache> watch = cache;
    auto engine = Factory::make(argsWith(cache));
    cache.reset();
    auto second = engine;
    engine.reset();
    EXPECT_FALSE(watch.expired());
    second.reset();
    EXPECT_TRUE(watch.expired()) << "the cache dies with the interface";
    const auto next = std::make_shared<FakeLibraryCache>();
    engine = Factory::make(argsWith(next));
    EXPECT_EQ(engine->initialLoadTask(), next->initialLoadTask());
}

TEST(Factory, ALivingInterfaceTakesANewMode)
{
    auto args = argsWith(std::make_shared<FakeLibraryCache>());
    args.modeConfiguration = std::make_shared<ManageModeConfiguration>();
    const std::weak_ptr<ModeConfiguration> first = *args.modeConfiguration;
    const auto engine = Factory::make(std::move(args));
    EXPECT_FALSE(first.expired());

    Factory::make(Factory::Args());
    EXPECT_FALSE(first.expired()) << "a call without a mode leaves the old one";

    Factory::Args second;
    second.modeConfiguration = std::make_shared<ManageModeConfiguration>();
    const std::weak_ptr<ModeConfiguration> replacement = *second.modeConfiguration;
    Factory::make(std::move(second));
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(replacement.expired());
}

TEST(Factory, ALivingInterfaceKeepsItsPrompts)
{
    auto args = argsWith(std::make_shared<FakeLibraryCache>());
    args.userInteraction = std::make_shared<APIUserInteraction>();
    const std::weak_ptr<UserInteraction> first = *args.userInteraction;
    const auto engine = Factory::make(std::move(args));
    Factory::Args second;
    second.userInteraction = std::make_shared<APIUserInteraction>();
    const std::weak_ptr<UserInteraction> other = *second.userInteraction;
    Factory::make(std::move(second));
    EXPECT_FALSE(first.expired());
    EXPECT_TRUE(other.expired());
}

TEST(Factory, EveryCallSetsTheActiveDocument)
{
    const auto first = VarnDocument::create(L"First");
    const auto second = VarnDocument::create(L"Second");
    auto args = argsWith(std::make_shared<FakeLibraryCache>());
    args.document = first.get();
    const auto engine = Factory::make(std::move(args));
    EXPECT_EQ(activeUrl(*engine), urlOf(*first));

    Factory::Args withMode;
    withMode.document = second.get();
    withMode.modeConfiguration = std::make_shared<ManageModeConfiguration>();
    Factory::make(std::move(withMode));
    EXPECT_EQ(activeUrl(*engine), urlOf(*second));

    Factory::make(first.get(), nullptr, std::nullopt, std::nullopt, std::nullopt);
    EXPECT_EQ(activeUrl(*engine), urlOf(*first));

    Factory::make(Factory::Args());
    EXPECT_EQ(activeUrl(*engine), std::nullopt) << "none is a choice too";
}

TEST(Factory, EveryCallListsTheOpenDocumentsAnew)
{
    const auto cache = std::make_shared<FakeLibraryCache>();
    const auto engine = Factory::make(argsWith(cache));
    EXPECT_THAT(cache->documents()->urls(), IsEmpty());
    const auto opened = VarnDocument::create(L"Opened later");
    EXPECT_THAT(cache->documents()->urls(), IsEmpty());
    Factory::make(Factory::Args());
    EXPECT_THAT(cache->documents()->urls(), ElementsAre(QString::fromStdWString(urlOf(*opened))));
    EXPECT_EQ(cache->refreshes(), 2);
}

TEST(Factory, BothFormsOfACallDoTheSame)
{
    const auto document = VarnDocument::create(L"Bracket");
    const auto cache = std::make_shared<FakeLibraryCache>();
    const auto mode = std::make_shared<ManageModeConfiguration>();
    const auto prompts = std::make_shared<APIUserInteraction>();
    const auto engine = Factory::make(document.get(), nullptr, mode, cache, prompts);
    EXPECT_EQ(activeUrl(*engine), urlOf(*document));
    EXPECT_EQ(engine->initialLoadTask(), cache->initialLoadTask());
    EXPECT_GT(mode.use_count(), 1);
    EXPECT_GT(prompts.use_count(), 1);
}

TEST(Factory, AFailedMakeLeavesNothingBehind)
{
    struct FailingCache : FakeLibraryCache {
        void setDocumentIndex(std::shared_ptr<Tools::CamDocuments>) override { throw IOError("no documents"); }
    };
    EXPECT_EQ(failureOf([] { Factory::make(argsWith(std::make_shared<FailingCache>())); }), "IOError: no documents");
    const auto cache = std::make_shared<FakeLibraryCache>();
    const auto engine = Factory::make(argsWith(cache));
    EXPECT_EQ(engine->initialLoadTask(), cache->initialLoadTask());
}

TEST(Factory, ANullModeIsAProgrammingError)
{
    const auto engine = Factory::make(argsWith(std::make_shared<FakeLibraryCache>()));
    Factory::Args args;
    args.modeConfiguration = std::shared_ptr<ModeConfiguration>();
    const Asserts asserts;
    Factory::make(std::move(args));
    EXPECT_THAT(asserts.messages(), ElementsAre("!!modeConfiguration"));
}
