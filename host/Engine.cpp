#include "host/Commands.h"
#include "host/LibraryShelf.h"

#include "ToolLibrary/Interface/Factory.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <QDir>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::Messages;

std::shared_ptr<ToolLibraryInterface> makeEngine()
{
    Factory::Args args;
    args.cache = std::make_shared<LibraryShelf>();
    return Factory::make(std::move(args));
}

ToolLibraryLocator libraryNamed(const std::string &name)
{
    const std::wstring text = Messages::fromUTF8ToWideUnicode(name);
    if (name.find("://") != std::string::npos)
        return ToolLibraryLocator(text);
    return ToolLibraryLocator::fromFilePath(text);
}

} // namespace Quillon
