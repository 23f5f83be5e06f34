// Failure.h -- what an operation ended with, as one text, so that tables of failures can be compared.
#pragma once

#include "platform/ox/HubLibrariesCache.h"
#include "platform/tool/Exception.h"

#include <boost/core/demangle.hpp>

#include <string>
#include <typeinfo>

namespace TestSupport {

/// The class without its namespace, and the text: "LibraryMissing: Document not found". An exception of the library
/// that carries a translated text has " (translated)" behind it; "none" when the operation ends well.
template <typename Operation>
std::string failureOf(const Operation &operation)
{
    try {
        operation();
    } catch (const std::exception &failure) {
        const std::string name = boost::core::demangle(typeid(failure).name());
        const auto *ours = dynamic_cast<const Varn::ToolLibraries::Exception *>(&failure);
        return name.substr(name.rfind(':') + 1) + ": " + failure.what() +
               (ours && ours->translatedWhat() ? " (translated)" : "");
    }
    return "none";
}

} // namespace TestSupport
