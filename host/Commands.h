// Commands.h -- what each command of quillon does. A failure is an exception.
#pragma once

#include "host/CommandLine.h"
#include "platform/tool/ToolLibraryInterface.h"

#include <memory>
#include <string>

namespace Quillon {

/// The engine with its libraries; made by the command that needs it.
std::shared_ptr<Varn::ToolLibraries::ToolLibraryInterface> makeEngine();

/// A library as people name it: a URL, which has "://" in it, or a file.
Varn::ToolLibraries::ToolLibraryLocator libraryNamed(const std::string &name);

struct ToolsOptions {
    std::string library;
    int limit = 50;
    int offset = 0;
    bool json = false;
};
void runTools(const ToolsOptions &options, const Streams &streams);

struct ShowOptions {
    std::string library;
    std::string tool; ///< its GUID, or as much of its beginning as tells it from all others
    bool json = false;
};
void runShow(const ShowOptions &options, const Streams &streams);

/// Answers JSON-RPC 2.0, one message a line, until the input ends.
void runRpc(const Streams &streams);

} // namespace Quillon
