#include "platform/nc/Tool3DGeometryBase.h"

#include <utility>

namespace Varn {

Tool3DGeometryBase::Tool3DGeometryBase(std::wstring id) : m_id(std::move(id)) {}

Tool3DGeometryBase::~Tool3DGeometryBase() = default;

} // namespace Varn
