// PresetId.h -- the identifier of a feeds and speeds preset. A value type, any thread.
#pragma once

#include <string>
#include <utility>

namespace Varn::ToolLibraries {

/// Keeps the text as it was stored: most are GUIDs, but a preset of an old file may have any text.
class PresetId
{
public:
    explicit PresetId(std::wstring id) : m_id(std::move(id)) {}

    std::wstring toString() const { return m_id; }
    std::wstring rawString() const { return m_id; }

    friend bool operator==(const PresetId &a, const PresetId &b) { return a.m_id == b.m_id; }

private:
    std::wstring m_id;
};

} // namespace Varn::ToolLibraries
