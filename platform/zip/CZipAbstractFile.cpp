#include "platform/zip/CZipAbstractFile.h"

namespace Varn {

CZipAbstractFile::~CZipAbstractFile() = default;

} // namespace Varn
