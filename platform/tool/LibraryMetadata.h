// LibraryMetadata.h -- one node of the tree of libraries: what it is called, what it is and where it hangs. Shared
// between the tree, its copies and results: who changes one sees to it that no other thread reads it meanwhile.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <json/value.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT LibraryMetadata : public JSONSerializable
{
public:
    enum class Type { Document = 0, Folder = 1, Library = 2 };

    /// \param parent   the node above; nothing for a root
    /// \param readOnly true if the person may not change what the node names
    LibraryMetadata(std::wstring_view name, Type type, ToolLibraryLocator url, std::optional<ToolLibraryLocator> parent,
                    std::optional<bool> readOnly);
    LibraryMetadata(const LibraryMetadata &) = default;
    LibraryMetadata &operator=(const LibraryMetadata &) = delete; // the tree finds its nodes by their URLs

    const std::wstring &name() const { return m_name; }
    Type type() const { return m_type; }
    const ToolLibraryLocator &url() const { return m_url; } ///< the node's identity; never changes
    const std::optional<ToolLibraryLocator> &parent() const { return m_parent; }
    std::optional<bool> readOnly() const { return m_readOnly; }
    const std::optional<std::string> &folderId() const { return m_folderId; } ///< the hub's own name of a hub node
    const std::vector<unsigned int> &errors() const { return m_errors; }      ///< codes of the host's table of errors

    void setParent(const ToolLibraryLocator &parent);
    void setFolderId(const std::optional<std::string> &folderId);
    void setErrors(const std::vector<unsigned int> &errors);

    /// {"name","type","url","parent","readonly","folderId","errors":[code]}. What is absent is left out, an empty list
    /// of errors too. The type is "document", "folder" or "library". Members that came in with fromJson() and mean
    /// nothing here are printed as they came.
    std::string toJson() const override;

    /// The same as a value.
    Json::Value toJsonValue() const;

    /// Reads the text that toJson() gives. A null counts as absent, an absent name as empty. Throws InvalidInput for
    /// what is no JSON object, has no "url" or no known "type", or has another of the members above in a wrong form.
    static std::shared_ptr<LibraryMetadata> fromJson(const std::string &json);
    static std::shared_ptr<LibraryMetadata> fromJsonValue(Json::Value object);

protected:
    /// Writes the members into \a object. A kind of node with more to tell extends it.
    virtual void fillJson(Json::Value &object) const;

private:
    std::wstring m_name;
    Type m_type;
    ToolLibraryLocator m_url;
    std::optional<ToolLibraryLocator> m_parent;
    std::optional<bool> m_readOnly;
    std::optional<std::string> m_folderId;
    std::vector<unsigned int> m_errors;
    Json::Value m_others; ///< object of the members that are not ours; null when there is none
};

} // namespace Varn::ToolLibraries
