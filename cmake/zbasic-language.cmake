# Texts of a program in one file a language: for the build of the library, and installed for others.

# zbasic_language_dll(BASE ID SOURCE): language/ID/BASE18.dll out of a resource source, without any
# code. An empty ID puts it beside the programs, where it serves languages without a folder. The
# programs are where CMAKE_RUNTIME_OUTPUT_DIRECTORY says.
function(zbasic_language_dll base id source)
    set(target ${base}_language_${id})
    add_library(${target} SHARED ${source})
    # No entry point; and an import library of its own, as all have the same name.
    target_link_options(${target} PRIVATE -nostdlib -Wl,-e,0 -s)
    set(folder ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    if(NOT folder)
        set(folder ${CMAKE_CURRENT_BINARY_DIR})
    endif()
    if(id)
        string(APPEND folder /language/${id})
    endif()
    set_target_properties(${target} PROPERTIES
        LINKER_LANGUAGE CXX
        OUTPUT_NAME ${base}18
        PREFIX ""
        RUNTIME_OUTPUT_DIRECTORY ${folder}
        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target})
endfunction()
