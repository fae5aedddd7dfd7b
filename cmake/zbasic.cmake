# Helpers that the folders' CMakeLists.txt share.

include(${CMAKE_CURRENT_LIST_DIR}/zbasic-language.cmake)

# Warnings of our own code are errors; other people's headers come in as system headers.
function(zbasic_our_code target)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror>)
    # GCC 12 sees overlaps that are not there in `"x" + std::string` (its bug 105651).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
    endif()
    if(WIN32)
        target_compile_definitions(${target} PRIVATE
            NOMINMAX WIN32_LEAN_AND_MEAN STRICT _WIN32_WINNT=0x0A00)
    endif()
endfunction()

# Every source of a folder belongs to its target: a new file needs no further line.
function(zbasic_folder_sources target)
    foreach(folder IN LISTS ARGN)
        file(GLOB found CONFIGURE_DEPENDS
            ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
        list(FILTER found EXCLUDE REGEX "_native\\.cpp$")
        target_sources(${target} PRIVATE ${found})
    endforeach()
endfunction()

# The compiler's run-time DLLs go beside the programs, stripped: three times faster to load.
function(zbasic_copy_runtime_dlls)
    set(copies)
    foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${path}")
            find_file(ZBASIC_${name} ${name} PATHS /usr/${ZBASIC_MINGW_TRIPLE}/lib
                REQUIRED NO_CMAKE_FIND_ROOT_PATH)
            set(path ${ZBASIC_${name}})
        endif()
        set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
        add_custom_command(OUTPUT ${copy}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
            COMMAND ${CMAKE_STRIP} --strip-unneeded -o ${copy} ${path}
            DEPENDS ${path} VERBATIM)
        list(APPEND copies ${copy})
    endforeach()
    add_custom_target(runtime_dlls ALL DEPENDS ${copies})
endfunction()

# A program of ours: host, tool, test or benchmark.
function(zbasic_program target)
    zbasic_our_code(${target})
    add_dependencies(${target} runtime_dlls)
endfunction()
