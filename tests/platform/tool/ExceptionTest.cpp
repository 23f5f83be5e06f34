#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

template <typename Failure>
class ExceptionTest : public testing::Test
{
};

using Family = testing::Types<Exception, InvalidInput, LibraryMissing, ToolMissing, FolderMissing, AccessError, IOError,
                              LibraryFormatError, LibraryLoadError, GeometryLoadError, GeometryExportError,
                              NotSupportedError, UnknownError, UserCancellation>;
TYPED_TEST_SUITE(ExceptionTest, Family);

TYPED_TEST(ExceptionTest, CarriesBothTexts)
{
    const TypeParam plain("Tool not found");
    EXPECT_STREQ(plain.what(), "Tool not found");
    EXPECT_EQ(plain.translatedWhat(), std::nullopt);
    const TypeParam translated(std::string_view("cut here", 3), L"Werkzeug \u00fc");
    EXPECT_STREQ(translated.what(), "cut");
    EXPECT_EQ(translated.translatedWhat(), L"Werkzeug \u00fc");
    EXPECT_EQ(TypeParam("", L"").translatedWhat(), L"");
}

TYPED_TEST(ExceptionTest, IsCaughtByItsClassAndByThoseAbove)
{
    const auto fail = [] { throw TypeParam("x", L"y"); };
    EXPECT_THROW(fail(), TypeParam);
    EXPECT_THROW(fail(), Exception);
    EXPECT_THROW(fail(), std::runtime_error);
    try {
        fail();
    } catch (const Exception &failure) {
        EXPECT_EQ(typeid(failure), typeid(TypeParam));
        EXPECT_EQ(failure.translatedWhat(), L"y");
    }
}

TEST(GeometryExportErrorTest, HasACode)
{
    const GeometryExportError coded(2310, "Failed to export 3D geometry for some tools", L"t");
    EXPECT_EQ(coded.errorCode(), 2310U);
    EXPECT_STREQ(coded.what(), "Failed to export 3D geometry for some tools");
    EXPECT_EQ(coded.translatedWhat(), L"t");
    EXPECT_EQ(GeometryExportError(1, "x", std::nullopt).translatedWhat(), std::nullopt);
    EXPECT_EQ(GeometryExportError("x").errorCode(), 0U);
}

TEST(ExceptionFamilyTest, SiblingsAreTold)
{
    try {
        throw LibraryMissing("x");
    } catch (const ToolMissing &) {
        ADD_FAILURE() << "a sibling";
    } catch (const LibraryMissing &) {
        SUCCEED();
    }
}

} // namespace Varn::ToolLibraries
