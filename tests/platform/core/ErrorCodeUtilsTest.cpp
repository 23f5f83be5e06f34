#include "platform/core/ErrorCodeUtils.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ErrorCodeUtils;

namespace {

QVariantMap entry(int code)
{
    return {{"code", code}};
}

} // namespace

TEST(ErrorCodeUtils, TheCodeGoesFromEveryList)
{
    QVariantMap library{
        {"version", 36},
        {"errors", QVariantList{2103, entry(2103), 5}},
        {"data", QVariantList{QVariantMap{{"guid", "a"}, {"errors", QVariantList{entry(2103)}}},
                              QVariantMap{{"guid", "b"}, {"errors", QVariantList{entry(3201), entry(2103)}}},
                              QVariantMap{{"guid", "c"}}, 7}}};
    ErrorCodeUtils::removeErrorCodeFromLibrary(library, 2103);
    EXPECT_EQ(library,
              (QVariantMap{{"version", 36},
                           {"errors", QVariantList{5}},
                           {"data", QVariantList{QVariantMap{{"guid", "a"}},
                                                 QVariantMap{{"guid", "b"}, {"errors", QVariantList{entry(3201)}}},
                                                 QVariantMap{{"guid", "c"}}, 7}}}));
}

TEST(ErrorCodeUtils, WithoutTheCodeALibraryStaysAsItIs)
{
    for (const QVariantMap &library :
         {QVariantMap(), QVariantMap{{"errors", "x"}, {"data", 7}}, QVariantMap{{"errors", QVariantList()}},
          QVariantMap{{"data", QVariantMap{{"errors", QVariantList{2103}}}}},
          QVariantMap{{"errors", QVariantList{entry(2104), "2103x"}}, {"data", QVariantList{entry(2103)}}}}) {
        QVariantMap copy = library;
        ErrorCodeUtils::removeErrorCodeFromLibrary(copy, 2103);
        EXPECT_EQ(copy, library);
    }
}

TEST(ErrorCodeUtils, CodesOfTheHubHaveNumbers)
{
    const std::vector<QString> codes = {"SERVER_ERROR", "ODD", "PARTIAL_SYNC_SUCCESS", "SERVER_ERROR", "server_error"};
    EXPECT_THAT(ErrorCodeUtils::getErrorCodes(codes, true, true), ElementsAre(3301, 3300, 2301));
    EXPECT_THAT(ErrorCodeUtils::getErrorCodes(codes, true, false), ElementsAre(3301, 3300, 2301, 3301, 3300));
    EXPECT_THAT(ErrorCodeUtils::getErrorCodes(codes, false, true), ElementsAre(3301, 2301));
    EXPECT_THAT(ErrorCodeUtils::getErrorCodes({}, true, true), IsEmpty());
}
