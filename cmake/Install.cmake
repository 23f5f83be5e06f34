# What "./dev install" puts under its prefix: libraries, the headers meant for hosts, the CMake package, quillon, samples.
include(CMakePackageConfigHelpers)

set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/quillon)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ToolLibrary)

install(TARGETS VarnPlatform ToolLibrary EXPORT ToolLibraryTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
set_target_properties(VarnPlatform ToolLibrary PROPERTIES INSTALL_RPATH "\$ORIGIN")
install(TARGETS quillon RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
set_target_properties(quillon PROPERTIES INSTALL_RPATH "\$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

install(DIRECTORY util/utility DESTINATION ${header_dir}/util FILES_MATCHING PATTERN "*.h")
install(DIRECTORY platform DESTINATION ${header_dir} FILES_MATCHING PATTERN "*.h" PATTERN "data" EXCLUDE)
install(DIRECTORY ToolLibrary/Interface DESTINATION ${header_dir}/ToolLibrary
        FILES_MATCHING PATTERN "*.h" PATTERN "Private" EXCLUDE)
install(FILES ToolLibrary/ToolLibraryExport.h ToolLibrary/ToolLibraryParameter.h ToolLibrary/ToolLibraryParameters.def
              ToolLibrary/ToolLibraryParametersEnum.h
        DESTINATION ${header_dir}/ToolLibrary)
install(FILES ToolLibrary/IO/ToolLibraryUrl.h DESTINATION ${header_dir}/ToolLibrary/IO)
# The loader is for hosts too, with the faces of what it loads.
foreach(header DiskLibrary ExportableLibrary ToolLibraryLocatorInterrogator ToolSink ToolSource ToolSourceLoader)
    install(FILES ToolLibrary/Interface/Private/ToolSourceSink/${header}.h
            DESTINATION ${header_dir}/ToolLibrary/Interface/Private/ToolSourceSink)
endforeach()

install(DIRECTORY samples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillon/samples FILES_MATCHING PATTERN "*.json")

install(EXPORT ToolLibraryTargets NAMESPACE Quillon:: DESTINATION ${package_dir})
configure_package_config_file(cmake/ToolLibraryConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/ToolLibraryConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ToolLibraryConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ToolLibraryConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ToolLibraryConfigVersion.cmake
        DESTINATION ${package_dir})
