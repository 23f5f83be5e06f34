// Confirmation.h -- the question that a person has to answer before a package may be imported. A value, any thread.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT Confirmation : public JSONSerializable
{
public:
    Confirmation(std::wstring path, const ToolLibraryLocator &url, std::wstring name, int numberOfTools,
                 std::wstring disclaimerText);

    const std::wstring &path() const { return m_path; }                     ///< file of the package
    const ToolLibraryLocator &url() const { return m_url; }                 ///< where its tools would go
    const std::wstring &name() const { return m_name; }                     ///< name for the person
    int numberOfTools() const { return m_numberOfTools; }                   ///< in the package
    const std::wstring &disclaimerText() const { return m_disclaimerText; } ///< what the person has to agree to

    /// {"path","url","name","numberOfTools","disclaimerText"}
    std::string toJson() const override;

private:
    std::wstring m_path;
    ToolLibraryLocator m_url;
    std::wstring m_name;
    int m_numberOfTools;
    std::wstring m_disclaimerText;
};

} // namespace Varn::ToolLibraries
