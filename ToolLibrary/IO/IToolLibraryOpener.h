// IToolLibraryOpener.h -- the root of what opens libraries for a person. Thread rule: that of the class derived from
// it.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <string>

namespace Varn::Tools {

/// Has a name, and tells under it how it is used. How a library is opened is up to the class that derives from it.
class TOOL_LIBRARY_EXPORT IToolLibraryOpener
{
public:
    virtual ~IToolLibraryOpener();

protected:
    /// \a name, not empty, is the dialog that the reports speak of.
    explicit IToolLibraryOpener(std::wstring name);

    /// Reports what was done, not empty, with the opener's name, when the person allows reports.
    void logAnalyticsEvent(const std::wstring &description) const;

private:
    std::wstring m_name;
};

} // namespace Varn::Tools
