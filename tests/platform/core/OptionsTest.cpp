#include "platform/core/Options.h"

#include <gtest/gtest.h>

using Varn::Options;

TEST(Options, AreOffAtTheStartAndIndependent)
{
    EXPECT_FALSE(Options::getEnableToolValidation());
    EXPECT_FALSE(Options::getEnableToolLibraryLogging());

    Options::setEnableToolValidation(true);
    EXPECT_TRUE(Options::getEnableToolValidation());
    EXPECT_FALSE(Options::getEnableToolLibraryLogging());

    Options::setEnableToolLibraryLogging(true);
    Options::setEnableToolValidation(false);
    EXPECT_FALSE(Options::getEnableToolValidation());
    EXPECT_TRUE(Options::getEnableToolLibraryLogging());

    Options::setEnableToolLibraryLogging(false);
    EXPECT_FALSE(Options::getEnableToolLibraryLogging());
}
