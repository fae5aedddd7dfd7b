# cmake --install BUILD --prefix FOLDER, and cpack: what other people's programs build against and
# run with. A program finds it by find_package(zbasic), in the installed tree or in the build tree.

include(CMakePackageConfigHelpers)

set(package share/cmake/zbasic)
set(runtime_folder bin)
foreach(library zbasic sv)
    target_include_directories(${library} INTERFACE $<INSTALL_INTERFACE:include>)
endforeach()

install(DIRECTORY sv/include/ basic/include/ host/include/ DESTINATION include)
install(TARGETS zbasic sv zelhost_interface EXPORT zbasic-targets RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS zelhost zelml zeldbuser zelplugcheck RUNTIME DESTINATION bin)
install(TARGETS zelhost_plugin_figures zelhost_plugin_eventwatch LIBRARY DESTINATION bin/plugins)
install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/language DESTINATION bin)
install(FILES
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/lang.ini
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/zelhost18.dll
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/libstdc++-6.dll
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/libgcc_s_seh-1.dll
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/libwinpthread-1.dll
    DESTINATION bin)
# Symbols, where gdb looks for them.
foreach(folder "" plugins/)
    install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder}.debug DESTINATION bin/${folder}
        FILES_MATCHING PATTERN "*.debug")
endforeach()

# The package for CMake: made in the build tree, which has the same layout, and installed from there.
set(here ${CMAKE_BINARY_DIR}/${package})
configure_file(cmake/zbasic-language.cmake ${here}/zbasic-language.cmake COPYONLY)
configure_package_config_file(cmake/zbasic-config.cmake.in ${here}/zbasic-config.cmake
    INSTALL_DESTINATION ${package} NO_SET_AND_CHECK_MACRO PATH_VARS runtime_folder)
write_basic_package_version_file(${here}/zbasic-config-version.cmake COMPATIBILITY SameMinorVersion)
export(EXPORT zbasic-targets NAMESPACE zbasic:: FILE ${here}/zbasic-targets.cmake)
install(FILES
    ${here}/zbasic-config.cmake
    ${here}/zbasic-config-version.cmake
    ${here}/zbasic-language.cmake
    cmake/mingw-w64-x86_64.cmake
    DESTINATION ${package})
install(EXPORT zbasic-targets NAMESPACE zbasic:: DESTINATION ${package})

# The same for pkg-config; relocatable, as it finds itself.
set(made ${CMAKE_BINARY_DIR}/CMakeFiles/package)
configure_file(cmake/zbasic.pc.in ${made}/zbasic.pc @ONLY)
install(FILES ${made}/zbasic.pc DESTINATION lib/pkgconfig)

include(cmake/licences.cmake)
# The last: it lists what the others have installed.
configure_file(cmake/sbom.cmake.in ${made}/sbom.cmake @ONLY)
install(SCRIPT ${made}/sbom.cmake)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME zbasic)
set(CPACK_PACKAGE_FILE_NAME zbasic-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Basic utility library of desktop modelling programs")
include(CPack)
