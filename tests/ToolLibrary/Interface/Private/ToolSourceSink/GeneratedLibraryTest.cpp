// Whole libraries as the generator of the tests writes them: sound ones in every layout, spoilt ones, old ones.
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/LibraryGenerator.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

#include <set>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::IsEmpty;

namespace {

std::shared_ptr<DiskLibrary> load(const LibraryGenerator &file)
{
    return ToolSourceLoader::loadFromNonDocument(ToolLibraryLocator::fromFilePath(file.path().toStdWString()),
                                                 Varn::AbortableImpl());
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

/// Every face of a tool answers, and a copy of it answers alike.
void expectServed(const Tool &tool)
{
    const std::unique_ptr<Tool> copy = tool.clone();
    EXPECT_EQ(copy->toJson(), tool.toJson());
    EXPECT_EQ(copy->getToolValue(), tool.getToolValue()) << tool.toJson().substr(0, 200);
    EXPECT_EQ(copy->getToolId(), tool.getToolId());
    EXPECT_EQ(copy->getType(), tool.getType());
    EXPECT_EQ(copy->getDouble("tool_diameter"), tool.getDouble("tool_diameter"));
}

struct Violation {
    const char *kind;
    const char *failure; // the path stands behind one that ends in ": "
};

// clang-format off
constexpr Violation violations[] = {
    // kind              failure
    { "bad-utf8",        "LibraryFormatError: Failed to read or parse JSON file: "             },
    { "data-object",     "LibraryFormatError: Data member must be an array"                    },
    { "gauge-negative",  "LibraryFormatError: Tool 'gaugeLength' must be a non-negative number"},
    { "gauge-text",      "LibraryFormatError: Tool 'gaugeLength' must be a non-negative number"},
    { "holder-text",     "LibraryFormatError: Tool 'holder' must be an object"                 },
    { "literal-nan",     "LibraryFormatError: Failed to read or parse JSON file: "             },
    { "no-data",         "LibraryFormatError: JSON tool library has no data"                   },
    { "presets-empty",   "LibraryFormatError: Tool 'presets' must be a non-empty array"        },
    { "presets-missing", "LibraryFormatError: Tool 'presets' must be a non-empty array"        },
    { "presets-object",  "LibraryFormatError: Tool 'presets' must be a non-empty array"        },
    { "root-array",      "LibraryFormatError: JSON tool library should be an object"           },
    { "single-quotes",   "LibraryFormatError: Failed to read or parse JSON file: "             },
    { "start-text",      "LibraryFormatError: Tool 'start-values' must be an object"           },
    { "tool-null",       "LibraryFormatError: JSON tool data format is invalid"                },
    { "tool-number",     "LibraryFormatError: JSON tool data format is invalid"                },
    { "trailing-comma",  "LibraryFormatError: Failed to read or parse JSON file: "             },
    { "truncated",       "LibraryFormatError: Failed to read or parse JSON file: "             },
    { "unit-case",       "LibraryFormatError: Tool 'unit' must be 'millimeters' or 'inches'"   },
    { "unit-number",     "LibraryFormatError: Tool 'unit' must be 'millimeters' or 'inches'"   },
    { "unit-short",      "LibraryFormatError: Tool 'unit' must be 'millimeters' or 'inches'"   },
};
// clang-format on

class GeneratedViolation : public testing::TestWithParam<Violation>
{
};

class GeneratedDefects : public testing::TestWithParam<int>
{
};

class GeneratedLayout : public testing::TestWithParam<const char *>
{
};

} // namespace

TEST_P(GeneratedViolation, IsRefusedInWordsOfItsOwn)
{
    const auto &[kind, failure] = GetParam();
    const LibraryGenerator file(words("--count 12 --violation") << QString::fromLatin1(kind));
    std::string expected = failure;
    if (expected.ends_with(": "))
        expected += file.path().toStdString();
    EXPECT_EQ(failureOf([&] { load(file); }), expected);
}

INSTANTIATE_TEST_SUITE_P(GeneratedLibrary, GeneratedViolation, testing::ValuesIn(violations),
                         [](const testing::TestParamInfo<Violation> &row) {
                             std::string name = row.param.kind;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST(GeneratedLibrary, EveryViolationIsInTheTable)
{
    QString help = QString::fromStdString(LibraryGenerator::run({QStringLiteral("--help")})).simplified();
    help.replace(QStringLiteral("- "), QStringLiteral("-")); // where a word was broken
    const QString title = QStringLiteral("Violations: ");
    ASSERT_TRUE(help.contains(title));
    std::set<std::string> told;
    for (const QString &kind : help.section(title, 1).section(u'.', 0, 0).split(QStringLiteral(", ")))
        told.insert(kind.toStdString());
    std::set<std::string> known;
    for (const Violation &violation : violations)
        known.insert(violation.kind);
    EXPECT_EQ(told, known);
}

TEST_P(GeneratedDefects, AreSurvivedWithTheToolsThatTheGeneratorCounts)
{
    const LibraryGenerator file(words("--count 120 --defects --defect-rate 0.6 --seed") << QString::number(GetParam()));
    const std::string report = file.report();
    const std::size_t kept = std::stoul(report.substr(report.rfind('\t') + 1));
    const Asserts asserts;
    const std::shared_ptr<DiskLibrary> library = load(file);
    EXPECT_EQ(library->numberOfTools(), kept);
    const std::vector<ToolId> ids = library->getToolIds();
    std::size_t position = 0;
    for (auto at = library->begin(); at != library->end(); ++at, ++position) {
        const std::unique_ptr<const Tool> tool = *at;
        expectServed(*tool);
        const auto found = library->get(ids.at(position));
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ((*found)->toJson(), tool->toJson());
    }
    EXPECT_EQ(position, kept);
    EXPECT_EQ(library->toQVariantMap()["data"].toList().size(), qsizetype(kept));
    const auto again = RapidjsonToolLibrary::fromString(library->toJson(), Varn::AbortableImpl());
    EXPECT_EQ(again->getToolIds(), ids); // its texts may differ in the last digit of a long number
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(GeneratedLibrary, GeneratedDefects, testing::Values(1, 2, 3, 4, 5));

TEST_P(GeneratedLayout, MakesNoDifference)
{
    const QStringList common = words("--count 25 --seed 4");
    const std::string expected = load(LibraryGenerator(common))->toJson();
    EXPECT_TRUE(load(LibraryGenerator(common + words(GetParam())))->toJson() == expected);
}

INSTANTIATE_TEST_SUITE_P(GeneratedLibrary, GeneratedLayout,
                         testing::Values("--format indented", "--encoding utf-8-bom", "--encoding utf-16-le",
                                         "--encoding utf-16-be", "--encoding utf-32-le", "--encoding utf-32-be",
                                         "--encoding utf-16-le --format indented"));

TEST(GeneratedLibrary, TheOrderOfMembersAndTheFormOfNumbersAreKept)
{
    const auto plain = load(LibraryGenerator(words("--count 25 --seed 4")));
    for (const char *const layout : {"--shuffle-keys", "--fractions"}) {
        const LibraryGenerator file(words("--count 25 --seed 4") << QString::fromLatin1(layout));
        const auto library = load(file);
        EXPECT_TRUE(library->toJson() == file.text()) << layout;
        EXPECT_FALSE(library->toJson() == plain->toJson()) << layout;
        EXPECT_TRUE(library->toQVariantMap() == plain->toQVariantMap()) << "as values they are equal";
    }
}

TEST(GeneratedLibrary, OldToolsAreRefused)
{
    for (const char *const version : {"0", "1", "12", "31", "35"}) {
        const LibraryGenerator file(words("--count 3 --old-version") << QString::fromLatin1(version));
        EXPECT_EQ(failureOf([&] { load(file); }), std::string("NotSupportedError: Tools of format version ") + version +
                                                      " cannot be migrated to version 36 yet");
    }
    const LibraryGenerator unversioned(words("--count 3 --no-version"));
    EXPECT_EQ(failureOf([&] { load(unversioned); }),
              "NotSupportedError: Tools of format version 1 cannot be migrated to version 36 yet");
}

TEST(GeneratedLibrary, AnOldLibraryWithoutToolsBecomesACurrentOne)
{
    for (const char *const options : {"--old-version 0", "--old-version 12", "--old-version 35", "--no-version"}) {
        const auto library = load(LibraryGenerator(words("--count 0") + words(options)));
        EXPECT_EQ(library->toJson(), R"({"data":[],"version":36})") << options;
    }
}
