#include "platform/zip/CZipException.h"

namespace Varn {

CZipException::CZipException(Cause cause, const std::string &text) : std::runtime_error(text), m_cause(cause) {}

CZipException::~CZipException() = default;

} // namespace Varn
