# What every target of the project is compiled with.
add_library(vantroque_compile INTERFACE)
target_compile_options(vantroque_compile INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
    -Wno-missing-field-initializers -Wnon-virtual-dtor -Woverloaded-virtual -Wundef)
target_compile_definitions(vantroque_compile INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
# What libraries name that others of theirs need is not ours: less to install, and to load at each start.
target_link_options(vantroque_compile INTERFACE LINKER:--as-needed)
# Arithmetic in single precision is compared exactly, so no fused multiply-add behind our back.
target_compile_options(vantroque_compile INTERFACE -ffp-contract=off)
if(VANTROQUE_SANITIZE)
    # What only tests others need not be held against undefined behaviour itself: a third of the time
    # that its files take to compile.
    target_compile_options(vantroque_compile INTERFACE
        -fsanitize=${VANTROQUE_SANITIZE} $<$<BOOL:$<TARGET_PROPERTY:IS_TEST>>:-fno-sanitize=undefined>
        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_definitions(vantroque_compile INTERFACE VANTROQUE_SANITIZED)
    target_link_options(vantroque_compile INTERFACE -fsanitize=${VANTROQUE_SANITIZE})
endif()

# What is precompiled: what nearly every file includes, and the records, which nearly every file above
# them does. A file still includes what it uses.
set(vantroque_common_headers
    <QDateTime> <QJsonArray> <QJsonObject> <QString> <QStringList> <algorithm> <filesystem>
    <optional> <vector>)
set(vantroque_record_headers
    ${CMAKE_SOURCE_DIR}/VantroqueKit/Records/MediaInfo.h
    ${CMAKE_SOURCE_DIR}/VantroqueKit/Records/Profile.h
    ${CMAKE_SOURCE_DIR}/VantroqueKit/Records/Report.h)

# So that fuzzing sees which ways of the code an input goes.
function(vantroque_seen_by_fuzzing target)
    if(VANTROQUE_SANITIZE MATCHES address)
        target_compile_options(${target} PRIVATE -fsanitize-coverage=inline-8bit-counters,pc-table,trace-cmp)
    endif()
endfunction()

# vantroque_kit(NAME SOURCES... USES targets...): one folder of the kit, one library, one floor.
function(vantroque_kit name)
    cmake_parse_arguments(PARSE_ARGV 1 KIT "" "" "SOURCES;USES")
    add_library(Vantroque${name} STATIC ${KIT_SOURCES})
    target_include_directories(Vantroque${name} PUBLIC ${CMAKE_SOURCE_DIR}/VantroqueKit)
    target_link_libraries(Vantroque${name} PUBLIC ${KIT_USES} PRIVATE vantroque_compile)
    vantroque_seen_by_fuzzing(Vantroque${name})
    if(name STREQUAL "Base")
        target_precompile_headers(VantroqueBase PRIVATE ${vantroque_common_headers})
    elseif(name STREQUAL "Records")
        target_precompile_headers(VantroqueRecords PRIVATE
            ${vantroque_common_headers} ${vantroque_record_headers})
    else()
        target_precompile_headers(Vantroque${name} REUSE_FROM VantroqueRecords)
    endif()
endfunction()
