#include "platform/core/ToolSLDGeometry.h"

#include "platform/core/ToolSolid.h"
#include "platform/utils/FileReplacement.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/GeometryFile.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <thread>
#include <vector>

using namespace TestSupport;
using namespace Varn;
using namespace std::string_literals;
using testing::ElementsAre;

namespace {

const std::string allBytes = [] {
    std::string bytes;
    for (int i = 0; i < 3'000'000; ++i)
        bytes.push_back(static_cast<char>(i * 7 + i / 251));
    return bytes;
}();

class ToolSLDGeometryTest : public testing::Test
{
protected:
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }

    static std::string saved(const Tool3DGeometry &geometry)
    {
        const Ox::TemporaryFile file;
        FileOutputStream out(file.filePath());
        EXPECT_TRUE(geometry.save(out));
        EXPECT_TRUE(out.close());
        return FileInputStream(file.filePath()).readAll().value();
    }

    static std::string failure(const std::string &file)
    {
        return failureOf([&] { loadGeometry(L"id", file); });
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(ToolSLDGeometryTest, AFileIsSavedByteForByteAsItWasLoaded)
{
    for (const std::string &payload : {"s"s, "\0\r\n\x1A\xFF"s, std::string(65536, '\0'), allBytes}) {
        const std::string file = geometryFile(payload);
        const auto geometry = loadGeometry(L"id", file);
        EXPECT_EQ(geometry->solidBytes(), payload);
        EXPECT_EQ(saved(*geometry), file);
    }
}

TEST_F(ToolSLDGeometryTest, AReplacementTakesTheSameBytes)
{
    const auto geometry = makeGeometry(L"id", allBytes);
    FileReplacement file(at(L"a.3DTool"));
    EXPECT_TRUE(geometry->save(file));
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(FileInputStream(at(L"a.3DTool")).readAll(), geometryFile(allBytes));
}

TEST_F(ToolSLDGeometryTest, TheIdIsThatOfTheCaller)
{
    for (const std::wstring &id : geometryIds)
        EXPECT_EQ(makeGeometry(id)->id(), id);
}

TEST_F(ToolSLDGeometryTest, ABrokenFileIsRefusedWithWhatIsWrong)
{
    const std::string good = geometryFile("solid");
    struct Row {
        std::string file;
        const char *failure;
    };
    const Row rows[] = {
        {"", "the file is empty"},
        {"{\"data\":[]}", "this is no 3D geometry file"},
        {"\x8B", "the file ends after 1 of 56 bytes of its header"},
        {good.substr(0, 55), "the file ends after 55 of 56 bytes of its header"},
        {good.substr(0, 56), "the file ends after 0 of 5 bytes of the solid"},
        {good.substr(0, 60), "the file ends after 4 of 5 bytes of the solid"},
        {good + '\0', "there is more behind the solid"},
        {good + good, "there is more behind the solid"},
        {HandMadeGeometryFile{.magic = "\x8B"
                                       "3DT\n\x1A\n\n"}
             .bytes(),
         "this is no 3D geometry file"},
        {HandMadeGeometryFile{.version = 0}.bytes(), "unknown format version 0"},
        {HandMadeGeometryFile{.version = 2}.bytes(), "unknown format version 2"},
        {HandMadeGeometryFile{.version = 0xFFFFFFFF}.bytes(), "unknown format version 4294967295"},
        {HandMadeGeometryFile{.form = 2}.bytes(), "unknown form of solid 2"},
        {HandMadeGeometryFile{.payload = ""}.bytes(), "there is no solid in the file"},
        {HandMadeGeometryFile{.length = 4}.bytes(), "there is more behind the solid"},
        {HandMadeGeometryFile{.length = 6}.bytes(), "the file ends after 5 of 6 bytes of the solid"},
        {HandMadeGeometryFile{.length = 0x7FFFFFFF}.bytes(), "the file ends after 5 of 2147483647 bytes of the solid"},
        {HandMadeGeometryFile{.length = 0x80000000}.bytes(), "a solid of 2147483648 bytes is too large"},
        {HandMadeGeometryFile{.length = ~0ULL}.bytes(), "a solid of 18446744073709551615 bytes is too large"},
        {HandMadeGeometryFile{.digest = std::string(32, '\0')}.bytes(), "the checksum is wrong"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(failure(row.file), std::string("IOError: 3D geometry id: ") + row.failure);
}

TEST_F(ToolSLDGeometryTest, TheFailureNamesTheId)
{
    for (const std::wstring &id : geometryIds)
        EXPECT_EQ(failureOf([&] { loadGeometry(id, ""); }),
                  "IOError: 3D geometry " + Messages::fromWideUnicodeToUTF8(id) + ": the file is empty");
}

TEST_F(ToolSLDGeometryTest, EveryTruncationIsRefused)
{
    const std::string good = geometryFile("a solid of some bytes");
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_NE(failure(good.substr(0, size)), "none") << size;
    EXPECT_EQ(failure(good), "none");
}

TEST_F(ToolSLDGeometryTest, EveryFlippedBitIsRefused)
{
    const std::string good = geometryFile("a solid");
    for (std::size_t bit = 0; bit < good.size() * 8; ++bit) {
        std::string bad = good;
        bad[bit / 8] = static_cast<char>(bad[bit / 8] ^ (1 << bit % 8));
        EXPECT_NE(failure(bad), "none") << bit;
    }
}

TEST_F(ToolSLDGeometryTest, AStreamThatCannotBeReadIsNamedSo)
{
    FileInputStream nothing(at(L"missing"));
    EXPECT_EQ(failureOf([&] { ToolSLDGeometry::load(L"id", nothing); }),
              "IOError: 3D geometry id: the file cannot be read");
}

TEST_F(ToolSLDGeometryTest, AFullDiskIsNoticed)
{
    const auto geometry = makeGeometry(L"id", allBytes);
    FileOutputStream full(L"/dev/full");
    EXPECT_FALSE(geometry->save(full) && full.close());
    FileOutputStream closed(at(L"file"));
    closed.close();
    EXPECT_FALSE(geometry->save(closed));
}

TEST_F(ToolSLDGeometryTest, ACopyIsTheSameSolidUnderAnotherId)
{
    const auto geometry = makeGeometry(L"id", "bytes");
    const auto copy = ToolSLDGeometry::copy(geometry, L"other");
    EXPECT_EQ(copy->id(), L"other");
    EXPECT_EQ(geometry->id(), L"id");
    EXPECT_EQ(copy->solidBytes().data(), geometry->solidBytes().data()) << "shared, not copied";
    EXPECT_EQ(saved(*copy), saved(*geometry));
}

TEST_F(ToolSLDGeometryTest, ACopyOutlivesItsOrigin)
{
    auto geometry = makeGeometry(L"id", "bytes");
    const auto copy = ToolSLDGeometry::copy(geometry, L"other");
    geometry.reset();
    EXPECT_EQ(copy->solidBytes(), "bytes");
}

TEST_F(ToolSLDGeometryTest, ACopyOfNothingIsAProgrammingError)
{
    const Asserts asserts;
    EXPECT_EQ(ToolSLDGeometry::copy(nullptr, L"other"), nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:geometry"));
}

TEST_F(ToolSLDGeometryTest, AFileWhoseSolidIsNoneLoadsButHasNoSolid)
{
    const auto geometry = makeGeometry(L"id", "no solid at all");
    const std::string failure =
        ToolSolid::isAvailable()
            ? "GeometryLoadError: The solid cannot be read: \"Open CASCADE Topology V4, (c) Open Cascade\" is missing, "
              "at byte 0"
            : "NotSupportedError: This build has no 3D solids";
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(failureOf([&] { geometry->solid(); }), failure);
    EXPECT_EQ(failureOf([&] { ToolSLDGeometry::copy(geometry, L"b")->solid(); }), failure);
}
