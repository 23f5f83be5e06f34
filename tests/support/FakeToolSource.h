// FakeToolSource.h -- a source of the tools that a test names, which counts what is asked of it.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"

#include <algorithm>
#include <atomic>

namespace TestSupport {

class FakeToolSource : public Varn::ToolLibraries::ToolSource
{
public:
    using Tool = Varn::ToolLibraries::Tool;
    using ToolId = Varn::ToolLibraries::ToolId;

    /// \param tools texts of tools; an empty one is a place where the walk gives no tool
    explicit FakeToolSource(std::vector<std::string> tools = {}, int version = 36)
        : texts(std::move(tools)), m_version(version)
    {
    }

    std::string toJson() const override { return "[]"; }
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override
    {
        const auto found = std::ranges::find_if(texts, [&](const std::string &text) { return idOf(text) == id; });
        if (found == texts.end())
            return std::nullopt;
        return std::make_shared<Tool>(*found);
    }
    unsigned int numberOfTools() const override { return static_cast<unsigned int>(texts.size()); }
    std::vector<ToolId> getToolIds() const override
    {
        std::vector<ToolId> ids;
        std::ranges::transform(texts, std::back_inserter(ids), idOf);
        return ids;
    }
    int getVersion() const override { return m_version; }

    /// How many tools walks have made.
    int walked() const { return m_walked; }

    std::vector<std::string> texts;

private:
    static ToolId idOf(const std::string &text) { return text.empty() ? ToolId(text) : Tool(text).getToolId(); }
    std::unique_ptr<const Tool> at(unsigned int index) const override
    {
        ++m_walked;
        return texts.at(index).empty() ? nullptr : Tool::fromJson(texts.at(index));
    }

    int m_version;
    mutable std::atomic<int> m_walked{0};
};

} // namespace TestSupport
