# The 8-bit PCRE2 library as PCRE2::8BIT. Distributions ship it with or without CMake files of its
# own, and the latter cannot tell a static library of MinGW's: this finds either kind.

find_path(PCRE2_INCLUDE_DIR pcre2.h)
find_library(PCRE2_8BIT_LIBRARY pcre2-8)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PCRE2 REQUIRED_VARS PCRE2_8BIT_LIBRARY PCRE2_INCLUDE_DIR)

if(PCRE2_FOUND AND NOT TARGET PCRE2::8BIT)
    add_library(PCRE2::8BIT UNKNOWN IMPORTED)
    set_target_properties(PCRE2::8BIT PROPERTIES
        IMPORTED_LOCATION ${PCRE2_8BIT_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${PCRE2_INCLUDE_DIR})
    if(WIN32 AND NOT PCRE2_8BIT_LIBRARY MATCHES "\\.dll\\.a$")
        set_property(TARGET PCRE2::8BIT PROPERTY INTERFACE_COMPILE_DEFINITIONS PCRE2_STATIC)
    endif()
endif()
