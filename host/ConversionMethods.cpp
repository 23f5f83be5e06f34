#include "host/RpcMethods.h"

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/ToolNameGenerator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/OxJsonTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolLibraryLocatorInterrogator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/ox/JSONNode.h"
#include "platform/tool/ErrorResult.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <QStringList>

#include <json/value.h>

namespace Quillon {

using Varn::FileSystem;
using Varn::Messages;
using Varn::Tools::ToolLibraryUrl;
using namespace Varn::ToolLibraries;

namespace {

std::string jsonOf(const QString &text)
{
    return JsonText::print(Json::Value(text.toStdString()));
}

std::string jsonOf(const QStringList &texts)
{
    Json::Value list(Json::arrayValue);
    for (const QString &text : texts)
        list.append(text.toStdString());
    return JsonText::print(list);
}

/// What \a call gives, or the payload of what it throws.
template <typename Call>
Json::Value valueOrError(const Call &call)
{
    try {
        return call();
    } catch (const std::exception &failure) {
        return ErrorResult::createPayload(failure.what(), std::nullopt);
    }
}

struct UrlPredicate {
    const char *name;
    bool (ToolLibraryUrl::*test)() const;
};

// clang-format off
constexpr UrlPredicate urlPredicates[] = {
    { "isAllLibrary",         &ToolLibraryUrl::isAllLibrary         },
    { "isCloudFolder",        &ToolLibraryUrl::isCloudFolder        },
    { "isCloudLibrary",       &ToolLibraryUrl::isCloudLibrary       },
    { "isCloudRootFolder",    &ToolLibraryUrl::isCloudRootFolder    },
    { "isCustomFolder",       &ToolLibraryUrl::isCustomFolder       },
    { "isCustomLibrary",      &ToolLibraryUrl::isCustomLibrary      },
    { "isDocumentLibrary",    &ToolLibraryUrl::isDocumentLibrary    },
    { "isDocumentRootFolder", &ToolLibraryUrl::isDocumentRootFolder },
    { "isFolder",             &ToolLibraryUrl::isFolder             },
    { "isHubFolder",          &ToolLibraryUrl::isHubFolder          },
    { "isHubLibrary",         &ToolLibraryUrl::isHubLibrary         },
    { "isHubRootFolder",      &ToolLibraryUrl::isHubRootFolder      },
    { "isLibrary",            &ToolLibraryUrl::isLibrary            },
    { "isLibraryFile",        &ToolLibraryUrl::isLibraryFile        },
    { "isLocalFolder",        &ToolLibraryUrl::isLocalFolder        },
    { "isLocalLibrary",       &ToolLibraryUrl::isLocalLibrary       },
    { "isLocalRootFolder",    &ToolLibraryUrl::isLocalRootFolder    },
    { "isSampleLibrary",      &ToolLibraryUrl::isSampleLibrary      },
    { "isSamplesRootFolder",  &ToolLibraryUrl::isSamplesRootFolder  },
    { "isSetup",              &ToolLibraryUrl::isSetup              },
    { "isSystemLibrary",      &ToolLibraryUrl::isSystemLibrary      },
    { "isSystemRootFolder",   &ToolLibraryUrl::isSystemRootFolder   },
    { "isUnknown",            &ToolLibraryUrl::isUnknown            },
    { "isValid",              &ToolLibraryUrl::isValid              },
    { "isVendorFolder",       &ToolLibraryUrl::isVendorFolder       },
    { "isVendorLibrary",      &ToolLibraryUrl::isVendorLibrary      },
    { "isVendorRootFolder",   &ToolLibraryUrl::isVendorRootFolder   },
    { "isWebLibrary",         &ToolLibraryUrl::isWebLibrary         },
    { "needsUpgrade",         &ToolLibraryUrl::needsUpgrade         },
};

struct UrlText {
    const char *name;
    QString (ToolLibraryUrl::*text)() const;
};

constexpr UrlText urlTexts[] = {
    { "convertToCurrentVersion",    &ToolLibraryUrl::convertToCurrentVersion    },
    { "extension",                  &ToolLibraryUrl::extension                  },
    { "fullFilePath",               &ToolLibraryUrl::fullFilePath               },
    { "libraryBaseName",            &ToolLibraryUrl::libraryBaseName            },
    { "libraryDisplayName",         &ToolLibraryUrl::libraryDisplayName         },
    { "libraryName",                &ToolLibraryUrl::libraryName                },
    { "libraryPath",                &ToolLibraryUrl::libraryPath                },
    { "localizedSampleLibraryName", &ToolLibraryUrl::localizedSampleLibraryName },
    { "nodeTypeFromProtocol",       &ToolLibraryUrl::nodeTypeFromProtocol       },
    { "setupName",                  &ToolLibraryUrl::setupName                  },
};
// clang-format on

std::string describeUrl(const ToolLibraryUrl &url)
{
    Json::Value description(Json::objectValue);
    description["url"] = url.url().toStdString();
    description["protocol"] = static_cast<int>(url.protocol());
    description["version"] = url.version();
    for (const UrlPredicate &row : urlPredicates)
        description[row.name] = (url.*row.test)();
    for (const UrlText &row : urlTexts)
        description[row.name] = valueOrError([&] { return Json::Value((url.*row.text)().toStdString()); });
    description["libraryFileSystemPath"] =
        Messages::fromWideUnicodeToUTF8(FileSystem::fromPath(url.libraryFileSystemPath()));
    description["documentUrl"] = url.documentUrl().url().toStdString();
    description["parentUrl"] = url.parentUrl().url().toStdString();
    return JsonText::print(description);
}

struct LocatorPredicate {
    const char *name;
    bool (ToolLibraryLocatorInterrogator::*test)() const;
};

// clang-format off
constexpr LocatorPredicate locatorPredicates[] = {
    { "isDocument",               &ToolLibraryLocatorInterrogator::isDocument              },
    { "isHub",                    &ToolLibraryLocatorInterrogator::isHub                   },
    { "isLocalCsv",               &ToolLibraryLocatorInterrogator::isLocalCsv              },
    { "isLocalFile",              &ToolLibraryLocatorInterrogator::isLocalFile             },
    { "isLocalJson",              &ToolLibraryLocatorInterrogator::isLocalJson             },
    { "isLocalMasterCamHolders",  &ToolLibraryLocatorInterrogator::isLocalMasterCamHolders },
    { "isLocalMasterCamTools",    &ToolLibraryLocatorInterrogator::isLocalMasterCamTools   },
    { "isLocalTsv",               &ToolLibraryLocatorInterrogator::isLocalTsv              },
    { "isLocalUnigraphicsNX",     &ToolLibraryLocatorInterrogator::isLocalUnigraphicsNX    },
    { "isLocalZet",               &ToolLibraryLocatorInterrogator::isLocalZet              },
    { "isLocalZip",               &ToolLibraryLocatorInterrogator::isLocalZip              },
    { "isLocalZippedJson",        &ToolLibraryLocatorInterrogator::isLocalZippedJson       },
    { "isSetup",                  &ToolLibraryLocatorInterrogator::isSetup                 },
    { "isValidLibraryLocator",    &ToolLibraryLocatorInterrogator::isValidLibraryLocator   },
};
// clang-format on

std::string describeLocator(const ToolLibraryLocator &locator)
{
    const ToolLibraryLocatorInterrogator interrogator(locator);
    Json::Value description(Json::objectValue);
    for (const LocatorPredicate &row : locatorPredicates)
        description[row.name] = (interrogator.*row.test)();
    description["filePath"] = Json::Value();
    if (interrogator.isLocalFile())
        description["filePath"] =
            valueOrError([&] { return Json::Value(Messages::fromWideUnicodeToUTF8(interrogator.filePath())); });
    description["url"] = Json::Value();
    if (!locator.isFilePath())
        description["url"] = interrogator.url().url().toStdString();
    return JsonText::print(description);
}

ToolLibraryUrl urlFromPath(const RpcParameters &parameters)
{
    const int protocol = parameters.integer("protocol");
    if (protocol < ToolLibraryUrl::Document || protocol > ToolLibraryUrl::Unknown)
        throw RpcParameterError("Parameter protocol must be 0 to 10");
    return ToolLibraryUrl(parameters.qText("path"), static_cast<ToolLibraryUrl::ProtocolType>(protocol));
}

std::unique_ptr<Tool> toolOf(const RpcParameters &parameters)
{
    const rapidjson::Value &value = parameters.object("tool");
    const std::string kind = parameters.has("as") ? parameters.text("as") : "rapidjson";
    if (kind == "rapidjson")
        return std::make_unique<RapidJsonTool>(&value);
    if (kind != "ox")
        throw RpcParameterError("Parameter as must be \"rapidjson\" or \"ox\"");
    return std::make_unique<OxJsonTool>(Ox::JSONNode::parse(RapidJsonConvert::toString(value)));
}

std::string toolProperties(const RpcParameters &parameters)
{
    const std::unique_ptr<Tool> tool = toolOf(parameters);
    Json::Value properties(Json::objectValue);
    for (const std::string &key : parameters.textList("keys")) {
        const std::optional<Tool::Property> property = tool->getRawProperty(key);
        properties[key] =
            property ? std::visit([](const auto &value) { return Json::Value(value); }, *property) : Json::Value();
    }
    return JsonText::print(properties);
}

std::string describeIndexedTool(const RpcParameters &parameters)
{
    const IndexedTool tool(std::make_unique<RapidJsonTool>(&parameters.object("tool")));
    Json::Value description(Json::objectValue);
    description["name"] = Messages::fromWideUnicodeToUTF8(tool.getName());
    description["comment"] = Messages::fromWideUnicodeToUTF8(tool.getComment());
    description["productId"] = Messages::fromWideUnicodeToUTF8(tool.getProductId());
    description["vendor"] = Messages::fromWideUnicodeToUTF8(tool.getVendor());
    description["type"] = static_cast<int>(tool.getType());
    description["unit"] = static_cast<int>(tool.getUnit());
    Json::Value &rounded = description["rounded"] = Json::Value(Json::objectValue);
    for (const std::string &key : parameters.textList("keys")) {
        const std::optional<double> number = IndexedToolLookup::getRoundedDouble(tool, key);
        rounded[key] = number ? Json::Value(*number) : Json::Value();
    }
    return JsonText::print(description);
}

std::string toolName(const RpcParameters &parameters)
{
    const IndexedTool tool(std::make_unique<RapidJsonTool>(&parameters.object("tool")));
    const std::wstring name = parameters.has("country")
                                  ? ToolNameGenerator::generateLocalizedName(
                                        tool, Messages::fromUTF8ToWideUnicode(parameters.text("country")))
                                  : ToolNameGenerator::generateName(tool);
    return JsonText::print(Json::Value(Messages::fromWideUnicodeToUTF8(name)));
}

void addUrlMethods(JsonRpcDispatcher &dispatcher)
{
    const RpcParameter url{"url", RpcKind::Text};
    const RpcParameter withDot{"withDot", RpcKind::Boolean};
    dispatcher.add("ToolLibraryUrl.describe", {{url}, [](const RpcParameters &parameters) {
                                                   return describeUrl(ToolLibraryUrl(parameters.qText("url")));
                                               }});
    dispatcher.add("ToolLibraryUrl.makeChildUrl",
                   {{url, {"name", RpcKind::Text}}, [](const RpcParameters &parameters) {
                        const ToolLibraryUrl parent(parameters.qText("url"));
                        return jsonOf(parent.makeChildUrl(parameters.qText("name")).url());
                    }});
    dispatcher.add("ToolLibraryUrl.convertTo",
                   {{url, {"extension", RpcKind::Text}}, [](const RpcParameters &parameters) {
                        return jsonOf(ToolLibraryUrl(parameters.qText("url")).convertTo(parameters.qText("extension")));
                    }});
    dispatcher.add("ToolLibraryUrl.fromPath",
                   {{{"path", RpcKind::Text}, {"protocol", RpcKind::Integer}},
                    [](const RpcParameters &parameters) { return jsonOf(urlFromPath(parameters).url()); }});
    dispatcher.add("ToolLibraryUrl.makeUniqueUrlOnDisk",
                   {{url}, [](const RpcParameters &parameters) {
                        const ToolLibraryUrl wanted(parameters.qText("url"));
                        return jsonOf(ToolLibraryUrl::makeUniqueUrlOnDisk(wanted).url());
                    }});
    dispatcher.add("ToolLibraryUrl.allFileExtensions",
                   {{withDot}, [](const RpcParameters &parameters) {
                        return jsonOf(ToolLibraryUrl::allFileExtensions(parameters.boolean("withDot")));
                    }});
    dispatcher.add("ToolLibraryUrl.atRestFileExtensions",
                   {{withDot, {"withZetLib", RpcKind::Boolean}}, [](const RpcParameters &parameters) {
                        return jsonOf(ToolLibraryUrl::atRestFileExtensions(parameters.boolean("withDot"),
                                                                           parameters.boolean("withZetLib")));
                    }});
}

} // namespace

void addConversionMethods(JsonRpcDispatcher &dispatcher)
{
    addUrlMethods(dispatcher);
    const RpcParameter locator{"locator", RpcKind::Locator};
    const RpcParameter tool{"tool", RpcKind::Object};
    const RpcParameter keys{"keys", RpcKind::TextList};
    dispatcher.add(
        "ToolLibraryLocatorInterrogator.describe",
        {{locator}, [](const RpcParameters &parameters) { return describeLocator(parameters.locator("locator")); }});
    dispatcher.add("ToolSourceLoader.load",
                   {{locator}, [](const RpcParameters &parameters) {
                        return ToolSourceLoader::load(parameters.locator("locator"), Varn::AbortableImpl())->toJson();
                    }});
    dispatcher.add("Tool.properties", {{tool, keys, {"as", RpcKind::Text, true}}, &toolProperties});
    dispatcher.add("IndexedTool.describe", {{tool, keys}, &describeIndexedTool});
    dispatcher.add("ToolNameGenerator.generateName", {{tool, {"country", RpcKind::Text, true}}, &toolName});
}

} // namespace Quillon
