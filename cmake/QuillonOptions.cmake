# What every target of the project is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The precompiled headers need these two liberties to be cached at all.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
endif()

find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM)
    add_link_options(-fuse-ld=lld)
endif()

# No fused multiply-add: numbers agree between machines.
add_compile_options(-ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
endif()
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-qual -Wformat=2)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # These three misread std::string in this release of the compiler when it optimises (its bugs 105329 and 105651).
    add_compile_options(-Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # The iterators of RapidJSON are older than the reversed comparisons of C++20.
    add_compile_options(-Wno-ambiguous-reversed-operator)
endif()
if(QUILLON_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

# A template of RapidJSON or Qt must not differ between two libraries of one process.
add_compile_definitions(RAPIDJSON_HAS_STDSTRING=1 QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)

if(QUILLON_SANITIZERS)
    add_compile_options(-fsanitize=${QUILLON_SANITIZERS} -fno-omit-frame-pointer -g -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUILLON_SANITIZERS})
    if(QUILLON_SANITIZERS MATCHES "undefined")
        # The stack of RapidJSON adds to a null pointer before it has any memory.
        add_compile_options(-fno-sanitize=pointer-overflow)
    endif()
endif()

# Headers of third parties that nearly every source needs.
function(quillon_precompile target)
    target_precompile_headers(${target} PRIVATE
        <QByteArray> <QJsonDocument> <QJsonObject> <QMap> <QString> <QUrl> <QUuid> <QVariant>
        <algorithm> <functional> <map> <memory> <optional> <set> <string> <string_view> <vector>
        <json/json.h>)
endfunction()
