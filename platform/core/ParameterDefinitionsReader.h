// ParameterDefinitionsReader.h -- reads the JSON of the parameter definitions row by row. For one document.
#pragma once

#include "platform/core/ParameterDefinitions.h"

#include <rapidjson/document.h>

#include <string>
#include <string_view>

namespace Varn {

/// Every member throws std::runtime_error that names the faulty row.
class ParameterDefinitions::Reader
{
public:
    Reader(ParameterDefinitions &target, std::string_view json);

    void readAll();

private:
    void readParameter(const rapidjson::Value &row);
    void readPattern(const rapidjson::Value &row);
    void readEnumerations();
    void readLink(const rapidjson::Value &row);
    void readKind(const rapidjson::Value &row);

    ParameterDefinitions &m_target;
    rapidjson::Document m_document;
};

} // namespace Varn
