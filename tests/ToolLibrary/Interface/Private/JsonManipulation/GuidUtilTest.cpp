#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "platform/ox/TestMgr.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <limits>
#include <set>

using Ox::Test::TestMgr;
using Varn::GuidUtil;

namespace {

const QUuid uuid = QUuid::fromString(QStringLiteral("{0123ABCD-89ef-4123-8567-89abcdef0123}"));

class Numbered : public GuidUtil::GuidGenerator
{
public:
    QString operator()() override { return QString::number(++m_last); }

private:
    int m_last = 0;
};

/// A platform that says it is under test, with a generator; all is as before when it dies.
class TestGuids
{
public:
    TestGuids() : m_wasTesting(TestMgr::testing())
    {
        TestMgr::setTesting(true);
        m_previous = GuidUtil::setTestGuidGenerator(std::make_unique<Numbered>());
    }
    ~TestGuids()
    {
        GuidUtil::setTestGuidGenerator(std::move(m_previous));
        TestMgr::setTesting(m_wasTesting);
    }

private:
    bool m_wasTesting;
    std::unique_ptr<GuidUtil::GuidGenerator> m_previous;
};

bool isPlainGuid(const QString &text)
{
    static const QRegularExpression form("\\A[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}\\z");
    return form.match(text).hasMatch();
}

} // namespace

TEST(GuidUtil, MakesNewGuidsWithoutBraces)
{
    std::set<QString> made;
    for (int i = 0; i < 100; ++i) {
        const QString guid = GuidUtil::createGuid();
        EXPECT_TRUE(isPlainGuid(guid)) << guid.toStdString();
        made.insert(guid);
    }
    EXPECT_EQ(made.size(), 100U);
}

TEST(GuidUtil, AGeneratorIsAskedOnlyWhileThePlatformIsUnderTest)
{
    {
        const TestGuids guids;
        EXPECT_EQ(GuidUtil::createGuid(), "1");
        EXPECT_EQ(GuidUtil::createGuid(), "2");
        TestMgr::setTesting(false);
        EXPECT_TRUE(isPlainGuid(GuidUtil::createGuid()));
        TestMgr::setTesting(true);
        EXPECT_EQ(GuidUtil::createGuid(), "3");
    }
    EXPECT_TRUE(isPlainGuid(GuidUtil::createGuid()));
}

TEST(GuidUtil, UnderTestWithoutAGeneratorGuidsAreNew)
{
    const TestGuids guids;
    const auto generator = GuidUtil::setTestGuidGenerator(nullptr);
    EXPECT_TRUE(isPlainGuid(GuidUtil::createGuid()));
}

TEST(GuidUtil, InstallingAGeneratorGivesThePreviousOneBack)
{
    const TestGuids guids;
    auto second = std::make_unique<Numbered>();
    GuidUtil::GuidGenerator *const installed = second.get();
    const auto first = GuidUtil::setTestGuidGenerator(std::move(second));
    ASSERT_TRUE(first);
    EXPECT_EQ(GuidUtil::setTestGuidGenerator(nullptr).get(), installed);
    EXPECT_EQ(GuidUtil::setTestGuidGenerator(nullptr), nullptr);
}

TEST(GuidUtil, TheGuidOfADocumentToolHoldsItsIndex)
{
    struct Row {
        unsigned int index;
        const char *guid;
    };
    const Row rows[] = {
        {0, "{00000000-0000-0000-0000-000000000000}"},
        {1, "{00000000-0000-0000-0000-000000000001}"},
        {10, "{00000000-0000-0000-0000-00000000000a}"},
        {255, "{00000000-0000-0000-0000-0000000000ff}"},
        {4096, "{00000000-0000-0000-0000-000000001000}"},
        {std::numeric_limits<unsigned int>::max(), "{00000000-0000-0000-0000-0000ffffffff}"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(GuidUtil::fakeGuid(row.index), row.guid);
        EXPECT_EQ(GuidUtil::documentToolIndexToToolId(row.index), Varn::ToolLibraries::ToolId(std::string(row.guid)))
            << row.index;
        EXPECT_EQ("{" + GuidUtil::documentToolIndexToToolId(row.index).guid().asString() + "}", row.guid);
    }
}

TEST(GuidUtil, ReadsAGuidFromTheBytesOfAVariant)
{
    struct Row {
        const char *name;
        QVariant variant;
        QUuid expected;
    };
    const Row rows[] = {
        {"text with braces", uuid.toString(), uuid},
        {"text without braces", uuid.toString(QUuid::WithoutBraces), uuid},
        {"upper case", uuid.toString().toUpper(), uuid},
        {"bytes of the text", uuid.toByteArray(), uuid},
        {"a GUID itself", QVariant::fromValue(uuid), uuid},
        {"nothing", QVariant(), QUuid()},
        {"an empty text", QString(), QUuid()},
        {"no GUID", "drill", QUuid()},
        {"cut", uuid.toString().chopped(2), QUuid()},
        {"a number", 5, QUuid()},
        {"a list", QVariantList{uuid.toString()}, QUuid()},
        {"letters beyond ASCII", QString(uuid.toString()).replace('a', QChar(0xE4)), QUuid()},
    };
    for (const Row &row : rows)
        EXPECT_EQ(GuidUtil::toQUuid(row.variant), row.expected) << row.name;
}

TEST(GuidUtil, TrimsTheBraces)
{
    EXPECT_EQ(GuidUtil::trimGuid(uuid), "0123abcd-89ef-4123-8567-89abcdef0123");
    EXPECT_EQ(GuidUtil::trimGuid(QUuid()), "00000000-0000-0000-0000-000000000000");
}
