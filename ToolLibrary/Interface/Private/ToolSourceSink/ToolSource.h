// ToolSource.h -- the read face of everything that holds tools. May be read from any thread while nothing writes.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/JSONSerializable.h"
#include "platform/tool/Tool.h"
#include "platform/tool/ToolId.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ToolSource : public JSONSerializable
{
public:
    /// Walks the tools in the source's own order. It sees the size that the source had when the walk began; each
    /// dereference makes a new tool, which must not outlive the next change of the source.
    class TOOL_LIBRARY_EXPORT const_iterator
    {
    public:
        const_iterator() = default;
        explicit const_iterator(const ToolSource *source);

        friend bool operator==(const const_iterator &a, const const_iterator &b) { return a.equals(b); }

        /// REQUIRES: not at the end.
        std::unique_ptr<const Tool> operator*() const;
        const_iterator &operator++();

        /// Gives the state before and steps by \a n, which is 0 for a plain it++: that stays where it is. Loops use
        /// ++it.
        const_iterator operator++(int n);

    private:
        bool equals(const const_iterator &other) const;
        bool isEnd() const { return !m_parent; }
        void validate();

        const ToolSource *m_parent = nullptr; // null at the end
        std::uint32_t m_index = 0;
        std::uint32_t m_size = 0;
    };

    /// The whole source as a library document.
    std::string toJson() const override = 0;
    ~ToolSource() override;

    /// Nothing when the source has no such tool.
    virtual std::optional<std::shared_ptr<Tool>> get(ToolId id) const = 0;

    virtual const_iterator begin() const;
    virtual const_iterator end() const;
    virtual unsigned int numberOfTools() const = 0;

    /// In the source's own order.
    virtual std::vector<ToolId> getToolIds() const = 0;

    /// The format version of the tools.
    virtual int getVersion() const = 0;

private:
    /// REQUIRES: index < numberOfTools().
    virtual std::unique_ptr<const Tool> at(unsigned int index) const = 0;
};

} // namespace Varn::ToolLibraries
