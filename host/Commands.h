// Commands.h -- what each command of quillon does. A failure is an exception.
#pragma once

#include "host/CommandLine.h"

#include <string>
#include <vector>

namespace Quillon {

struct TreeOptions {
    bool tools = false; ///< count the tools of each library
    bool json = false;
};
void runTree(const TreeOptions &options, const Streams &streams);

struct ToolsOptions {
    std::string library;
    std::string search;
    std::vector<std::string> filters; ///< see ToolQuery.h
    std::vector<std::string> sorts;
    std::vector<std::string> columns{"number", "description", "type", "diameter", "unit", "vendor", "product-id"};
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

struct ConvertOptions {
    std::string input;
    std::string output;
    bool force = false; ///< replace what is there
};
void runConvert(const ConvertOptions &options, const Streams &streams);

/// Answers JSON-RPC 2.0, one message a line, until the input ends.
void runRpc(const Streams &streams);

} // namespace Quillon
