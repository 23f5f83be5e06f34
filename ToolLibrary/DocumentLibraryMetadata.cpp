#include "ToolLibrary/CamDocuments.h"

#include "platform/utils/Messages.h"

#include <utility>

namespace Varn::Tools {

using ToolLibraries::LibraryMetadata;
using ToolLibraries::ToolLibraryLocator;

namespace {

Json::Value operationJson(const CamDocuments::OperationMetadata &operation)
{
    Json::Value object(Json::objectValue);
    object["name"] = Messages::fromWideUnicodeToUTF8(operation.name);
    object["strategy"]["name"] = Messages::fromWideUnicodeToUTF8(operation.strategy.name);
    if (operation.toolId)
        object["toolID"] = operation.toolId->guid().asString();
    return object;
}

Json::Value setupJson(const CamDocuments::SetupMetadata &setup)
{
    Json::Value object(Json::objectValue);
    object["name"] = Messages::fromWideUnicodeToUTF8(setup.name);
    Json::Value &operations = object["operations"] = Json::Value(Json::arrayValue);
    for (const CamDocuments::OperationMetadata &operation : setup.operations)
        operations.append(operationJson(operation));
    return object;
}

} // namespace

CamDocuments::DocumentLibraryMetadata::DocumentLibraryMetadata(std::wstring_view name, ToolLibraryLocator url,
                                                               bool isActiveDocument, std::vector<SetupMetadata> setups)
    : LibraryMetadata(name, Type::Document, std::move(url), std::nullopt, std::nullopt),
      m_isActiveDocument(isActiveDocument),
      m_setups(std::move(setups))
{
}

void CamDocuments::DocumentLibraryMetadata::fillJson(Json::Value &object) const
{
    LibraryMetadata::fillJson(object);
    if (m_isActiveDocument)
        object["activeDocument"] = true;
    Json::Value &setups = object["setups"] = Json::Value(Json::arrayValue);
    for (const SetupMetadata &setup : m_setups)
        setups.append(setupJson(setup));
}

} // namespace Varn::Tools
