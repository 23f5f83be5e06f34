// list_tools FILE -- prints the description of every tool in a library file.
#include <ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h>
#include <platform/tool/Exception.h>
#include <platform/utils/Abortable.h>
#include <platform/utils/Messages.h>

#include <iostream>

using namespace Varn::ToolLibraries;

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "usage: list_tools FILE\n";
        return 2;
    }
    const auto locator = ToolLibraryLocator::fromFilePath(Varn::Messages::fromUTF8ToWideUnicode(argv[1]));
    try {
        const Varn::AbortableImpl never;
        const std::shared_ptr<ToolSource> library = ToolSourceLoader::load(locator, never);
        const auto end = library->end();
        for (auto tool = library->begin(); !(tool == end); ++tool)
            std::cout << (*tool)->getDescription() << '\n';
    } catch (const Exception &failure) {
        std::cerr << argv[1] << ": " << failure.what() << '\n';
        return 1;
    }
}
