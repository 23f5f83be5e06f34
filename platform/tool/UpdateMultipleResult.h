// UpdateMultipleResult.h -- what became of a batch, item by item. Values, any thread.
#pragma once

#include "platform/tool/JSONSerializable.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT UpdateMultipleImpl
{
public:
    /// The JSON list of the results, in their order; null for a null pointer.
    static std::string convert(const std::vector<const JSONSerializable *> &results);
};

/// The single results in the order in which they were appended.
template <typename T>
class VARN_PLATFORM_EXPORT UpdateMultipleResult : public JSONSerializable
{
public:
    void append(T result) { m_results.push_back(std::move(result)); }

    const std::vector<T> &results() const { return m_results; }
    std::size_t numResults() const { return m_results.size(); }

    /// The list of the single results.
    std::string toJson() const override
    {
        std::vector<const JSONSerializable *> results;
        results.reserve(m_results.size());
        for (const T &result : m_results)
            results.push_back(&result);
        return UpdateMultipleImpl::convert(results);
    }

private:
    std::vector<T> m_results;
};

} // namespace Varn::ToolLibraries
