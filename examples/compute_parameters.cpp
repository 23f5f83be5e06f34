// compute_parameters TYPE [NAME=EXPRESSION ...] -- edits the parameters of a new tool one after the other, as a person
// does in a dialog, and prints all that are enabled, with what is wrong with them:
//
//     compute_parameters "ball end mill" tool_diameter=8 tool_surfaceSpeed=120000
#include <platform/core/LinkedParameter.h>
#include <platform/core/ParameterTable.h>
#include <platform/core/ToolSpecification.h>
#include <platform/tool/Exception.h>
#include <platform/utils/Messages.h>

#include <iostream>

using namespace Varn;

namespace {

std::wstring wide(std::string_view text)
{
    return Messages::fromUTF8ToWideUnicode(text);
}

void print(const ParameterTable &table)
{
    for (const auto &parameter : table.getParameters()) {
        if (!parameter->isEnabled())
            continue;
        std::cout << Messages::fromWideUnicodeToUTF8(parameter->getName()) << ": "
                  << Messages::fromWideUnicodeToUTF8(parameter->getAsText()) << '\n';
        for (const std::wstring &message : parameter->getErrorMessages())
            std::cout << "    error: " << Messages::fromWideUnicodeToUTF8(message) << '\n';
        for (const std::wstring &message : parameter->getWarningMessages())
            std::cout << "    warning: " << Messages::fromWideUnicodeToUTF8(message) << '\n';
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::cerr << "usage: compute_parameters TYPE [NAME=EXPRESSION ...]\n";
        return 2;
    }
    try {
        const ToolGeometry::Type type = ToolGeometry::getToolTypeFromString(std::string_view(argv[1]));
        ParameterTable table(ToolSpecification::getStrategyType(type));
        table.setParameter(L"tool_type", wide(argv[1]));
        for (int i = 2; i < argc; ++i) {
            const std::string_view edit = argv[i];
            const std::size_t equals = edit.find('=');
            if (equals == std::string_view::npos)
                throw ToolLibraries::InvalidInput("Not NAME=EXPRESSION: " + std::string(edit));
            LinkedParameter::edit(table, wide(edit.substr(0, equals)), wide(edit.substr(equals + 1)), Units::UNIT_NONE);
        }
        print(table);
    } catch (const ToolLibraries::Exception &failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
