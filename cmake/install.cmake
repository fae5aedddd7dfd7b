# cmake --install BUILD --prefix FOLDER: include/, lib/ (import libraries) and bin/ with all that
# programs need beside them. Plug-ins and programs of others build against it.

install(DIRECTORY sv/include/ basic/include/ host/include/ DESTINATION include)
install(TARGETS zbasic sv RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
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
