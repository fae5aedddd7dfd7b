# What others wrote and we link: their licences are installed, and the list of contents names them.

set(sbom_parts)
set(licences share/zbasic/licences)

# zbasic_part(NAME VERSION LICENCE RELATIONSHIP FILE): LICENCE and RELATIONSHIP are SPDX's terms.
function(zbasic_part name version licence relationship file)
    list(APPEND sbom_parts "${name}|${version}|${licence}|${relationship}")
    set(sbom_parts "${sbom_parts}" PARENT_SCOPE)
    install(FILES ${file} DESTINATION ${licences} RENAME ${name}.txt)
endfunction()

# Libraries that scripts/build-deps.sh has built: NAME-VERSION-gccX-Y, with Debian's account of them.
foreach(folder IN LISTS ZBASIC_DEPS)
    cmake_path(GET folder FILENAME built)
    if(NOT built MATCHES "^([a-z0-9.]+)-(.+)-gcc" OR NOT EXISTS ${folder}/copyright)
        continue()
    endif()
    set(name ${CMAKE_MATCH_1})
    set(version ${CMAKE_MATCH_2})
    if(name MATCHES "^libpng")
        zbasic_part(libpng ${version} libpng-2.0 STATIC_LINK ${folder}/copyright)
    elseif(name STREQUAL "pcre2")
        zbasic_part(pcre2 ${version} BSD-3-Clause STATIC_LINK ${folder}/copyright)
    elseif(name STREQUAL "openssl")
        zbasic_part(openssl ${version} Apache-2.0 STATIC_LINK ${folder}/copyright)
    endif()
endforeach()

# Packages of the machine: zbasic_package_part(NAME PACKAGE LICENCE RELATIONSHIP).
function(zbasic_package_part name package licence relationship)
    set(file /usr/share/doc/${package}/copyright)
    find_program(ZBASIC_DPKG_QUERY dpkg-query)
    if(ZBASIC_DPKG_QUERY AND EXISTS ${file})
        execute_process(COMMAND ${ZBASIC_DPKG_QUERY} -W -f "\${Version}" ${package}
            OUTPUT_VARIABLE version)
        zbasic_part(${name} ${version} "${licence}" ${relationship} ${file})
        set(sbom_parts "${sbom_parts}" PARENT_SCOPE)
    endif()
endfunction()
zbasic_package_part(zlib libz-mingw-w64-dev Zlib STATIC_LINK)
zbasic_package_part(gcc-runtime gcc-mingw-w64-base
    "GPL-3.0-or-later WITH GCC-exception-3.1" DYNAMIC_LINK)
zbasic_package_part(mingw-w64-runtime mingw-w64-common "ZPL-2.1 AND MIT" DYNAMIC_LINK)
