# The keys that are built into the library, as a source in the build tree. They come from a seed:
# programs read each other's encrypted texts when theirs was the same. Whoever ships a product
# gives a seed of its own: -DZBASIC_KEY_SEED=... (it stays in CMakeCache.txt, which is not shipped).
set(ZBASIC_KEY_SEED "zbasic" CACHE STRING
    "What the built-in keys are made from; the same in all builds that read each other's texts")
mark_as_advanced(ZBASIC_KEY_SEED)
if(ZBASIC_KEY_SEED STREQUAL "")
    message(FATAL_ERROR "ZBASIC_KEY_SEED must not be empty")
endif()

# zbasic_key_tables(TARGET): adds the generated source. Hashes of 64 bytes, so that nothing of the
# seed can be told from a table, nor one table from another.
function(zbasic_key_tables target)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/keytables.cpp)
    set(content "#include \"crypt/builtinkey.h\"\n")
    foreach(table kAesKeyTable:64 kAesIvTable:64 kDesKey:8)
        string(REPLACE ":" ";" parts ${table})
        list(GET parts 0 name)
        list(GET parts 1 size)
        string(SHA512 hash "${name}:${ZBASIC_KEY_SEED}")
        math(EXPR digits "2 * ${size}")
        string(SUBSTRING ${hash} 0 ${digits} hash)
        string(REGEX REPLACE "(..)" "0x\\1, " bytes ${hash})
        string(APPEND content "extern const unsigned char ${name}[${size}] = {${bytes}};\n")
    endforeach()
    file(CONFIGURE OUTPUT ${source} CONTENT "${content}" @ONLY)
    target_sources(${target} PRIVATE ${source})
endfunction()
