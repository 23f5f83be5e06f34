// TestMain.cpp -- runs the tests of a program under a Qt application whose thread is the main thread.
#include <QCoreApplication>

#include <gmock/gmock.h>

#include <clocale>

int main(int argc, char **argv)
{
    qunsetenv("QUILLON_LOCALE"); // texts are English unless a test says otherwise
    QCoreApplication application(argc, argv);
    // Where the machine has it: a decimal comma of the process must not reach any reader or writer.
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
        std::setlocale(LC_NUMERIC, "fr_FR.UTF-8");
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
