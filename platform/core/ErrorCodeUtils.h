// ErrorCodeUtils.h -- the host's error codes in libraries and at nodes of the tree. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QString>
#include <QVariantMap>

#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ErrorCodeUtils
{
public:
    /// Removes the entries of that code from every list "errors": that of the library, which may hold plain codes or
    /// maps with a "code", and those of its tools. A list that becomes empty goes.
    static void removeErrorCodeFromLibrary(QVariantMap &library, int code);

    /// The numbers of codes such as "SERVER_ERROR", as a node of the tree holds them. With \a unknownToo a code without
    /// a number of its own is that of an unknown error, else it is left out; with \a onlyOnce each number stands once.
    static std::vector<unsigned int> getErrorCodes(const std::vector<QString> &codes, bool unknownToo, bool onlyOnce);
};

} // namespace Varn
