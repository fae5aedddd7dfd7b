# What a file of ours carries that others get: a version resource, and its symbols in a file of
# their own, where gdb looks for them.

# zbasic_symbols(TARGET...): compiled with symbols; for the libraries that a shipped file is made of.
function(zbasic_symbols)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-g>)
    endforeach()
endfunction()

# zbasic_ships(TARGET DESCRIPTION): TARGET is installed; its name and kind are set before.
function(zbasic_ships target description)
    get_target_property(kind ${target} TYPE)
    if(kind STREQUAL "EXECUTABLE")
        set(type VFT_APP)
        set(suffix .exe)
    else()
        set(type VFT_DLL)
        set(suffix .dll)
    endif()
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    set(file ${name}${suffix})
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
    set_property(SOURCE ${resource} APPEND PROPERTY OBJECT_DEPENDS
        ${PROJECT_SOURCE_DIR}/basic/include/zbasic/zversionnumber.h)
    target_sources(${target} PRIVATE ${resource})

    zbasic_symbols(${target})
    set(symbols $<TARGET_FILE_DIR:${target}>/.debug/${file}.debug)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E make_directory $<TARGET_FILE_DIR:${target}>/.debug
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${symbols}
        COMMAND ${CMAKE_STRIP} --strip-unneeded $<TARGET_FILE:${target}>
        COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${symbols} $<TARGET_FILE:${target}>
        VERBATIM)
endfunction()
