// ToolLibrary.h -- a whole library on its way across the interface: the text of its JSON document. Any thread may read
// one.
#pragma once

#include "platform/tool/JSONSerializable.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ToolLibrary : public JSONSerializable
{
public:
    /// Takes over \a json, {"data":[tool],"version"}, as it is; its tools are not looked into. Throws InvalidInput for
    /// what is no JSON object with a list "data". Of duplicate members the last counts. No tree of values is made, and
    /// a text that is moved in is not copied: a library may have hundreds of megabytes.
    static std::unique_ptr<ToolLibrary> fromJson(std::string json);

    /// The same for who has printed the document himself and knows what is in it: nothing is read or checked.
    static std::unique_ptr<ToolLibrary> make(std::string json, int version, std::size_t numberOfTools);

    /// The text that came in.
    std::string toJson() const override { return m_json; }

    /// The same without a copy.
    const std::string &json() const { return m_json; }

    /// Tool format version of the tools: the member "version" if it is an integer of 32 bits, else 1; 0 for one below
    /// 0.
    int version() const { return m_version; }

    std::size_t numberOfTools() const { return m_numberOfTools; }

private:
    ToolLibrary(std::string &&json, int version, std::size_t numberOfTools);

    std::string m_json;
    int m_version;
    std::size_t m_numberOfTools;
};

} // namespace Varn::ToolLibraries
