// IndexNodes.h -- a tree of libraries as texts, for comparisons.
#pragma once

#include "platform/tool/LibraryMetadataTree.h"

#include <QString>

#include <string>
#include <vector>

namespace TestSupport {

inline std::string narrow(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

/// The URLs in the order of a walk.
inline std::vector<std::string> urlsOf(const Varn::ToolLibraries::LibraryMetadataTree &tree)
{
    std::vector<std::string> urls;
    for (const auto &url : tree.traverseUrls())
        urls.push_back(narrow(url.url()));
    return urls;
}

inline void addLines(const Varn::ToolLibraries::LibraryMetadataNode &node, const std::string &indent,
                     std::vector<std::string> &lines)
{
    const auto &metadata = *node.metadata();
    lines.push_back(indent + narrow(metadata.url().url()) + " " + narrow(metadata.name()) +
                    (metadata.readOnly().value_or(false) ? " (read-only)" : ""));
    for (const auto &child : node.children())
        addLines(child, indent + "  ", lines);
}

/// "URL NAME" of each node, two blanks further in for each level, and " (read-only)" where it is.
inline std::vector<std::string> nodesOf(const Varn::ToolLibraries::LibraryMetadataTree &tree)
{
    std::vector<std::string> lines;
    for (const auto *root : tree.traverseRootNodes())
        addLines(*root, "", lines);
    return lines;
}

} // namespace TestSupport
