#include "host/CommandLine.h"
#include "host/Locale.h"
#include "platform/utils/LocaleRegistry.h"

#include <QCoreApplication>

#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <iostream>

namespace {

/// The width of the terminal that the output goes to, or 0 when it goes elsewhere.
std::size_t terminalWidth()
{
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // Qt takes over the person's locale; numbers in files have a point everywhere
    Varn::LocaleRegistry::setCountry(Quillon::countryOfEnvironment());
    std::ios::sync_with_stdio(false);
    return Quillon::runCommandLine({argv + 1, argv + argc},
                                   {std::cin, std::cout, std::cerr, terminalWidth(), isatty(STDERR_FILENO) != 0});
}
