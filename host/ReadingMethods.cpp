#include "host/RpcMethods.h"

#include "platform/tool/ToolPageRequest.h"
#include "platform/utils/Abortable.h"

#include <utility>

namespace Quillon {

using Varn::ToolLibraries::LibraryTool;
using Varn::ToolLibraries::ToolId;
using Varn::ToolLibraries::ToolLibraryInterface;
using Varn::ToolLibraries::ToolLibraryLocator;
using Varn::ToolLibraries::ToolPageRequest;

namespace {

template <typename Items>
std::string listOf(const Items &items)
{
    std::string json = "[";
    for (const auto &item : items) {
        if (json.size() > 1)
            json += ',';
        json += item.toJson();
    }
    return json + "]";
}

std::string loadTaskJson(const ToolLibraryInterface &engine)
{
    return engine.initialLoadTask()->isAborted() ? R"({"aborted":true})" : R"({"aborted":false})";
}

std::string findToolById(ToolLibraryInterface &engine, const RpcParameters &parameters)
{
    const ToolId id(parameters.text("toolId"));
    const std::optional<const LibraryTool> tool =
        parameters.has("locator") ? engine.findToolById(parameters.locator("locator"), id) : engine.findToolById(id);
    return tool ? tool->toJson() : "null";
}

std::string fetchTools(ToolLibraryInterface &engine, const RpcParameters &parameters)
{
    const ToolPageRequest request(parameters.locatorList("libraryIds"), parameters.listOrText("filtersState"),
                                  parameters.integer("pageLimit"), parameters.integer("pageOffset"),
                                  parameters.text("searchQuery"), parameters.listOrText("sortState"));
    return engine.fetchTools(request)->toJson();
}

} // namespace

void addReadingMethods(JsonRpcDispatcher &dispatcher, std::shared_ptr<ToolLibraryInterface> engine)
{
    dispatcher.add("initialLoadTask", {{}, [engine](const RpcParameters &) { return loadTaskJson(*engine); }});
    dispatcher.add("initialLoadTask.abort", {{}, [engine](const RpcParameters &) {
                                                 engine->initialLoadTask()->abort();
                                                 return std::string("null");
                                             }});
    dispatcher.add("toolLibrariesIndex",
                   {{}, [engine](const RpcParameters &) { return engine->toolLibrariesIndex().toJson(); }});
    const std::vector<RpcParameter> oneLocator{{"locator", RpcKind::Locator}};
    dispatcher.add("library", {oneLocator, [engine](const RpcParameters &parameters) {
                                   return engine->library(parameters.locator("locator"))->toJson();
                               }});
    dispatcher.add("fetchTools",
                   {{{"libraryIds", RpcKind::LocatorList},
                     {"filtersState", RpcKind::ListOrText},
                     {"searchQuery", RpcKind::Text},
                     {"sortState", RpcKind::ListOrText},
                     {"pageLimit", RpcKind::Integer},
                     {"pageOffset", RpcKind::Integer}},
                    [engine](const RpcParameters &parameters) { return fetchTools(*engine, parameters); }});
    dispatcher.add("getToolsFromLibrary",
                   {oneLocator, [engine](const RpcParameters &parameters) {
                        return listOf(engine->getToolsFromLibrary(parameters.locator("locator")));
                    }});
    dispatcher.add("findToolById",
                   {{{"toolId", RpcKind::Text}, {"locator", RpcKind::Locator, true}},
                    [engine](const RpcParameters &parameters) { return findToolById(*engine, parameters); }});
    dispatcher.add("getAllLibraryUrls",
                   {{}, [engine](const RpcParameters &) { return listOf(engine->getAllLibraryUrls()); }});
}

} // namespace Quillon
