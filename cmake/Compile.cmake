# What every target of the project is compiled with.
add_library(vantroque_compile INTERFACE)
target_compile_options(vantroque_compile INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
    -Wno-missing-field-initializers -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wduplicated-cond)
target_compile_definitions(vantroque_compile INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
# g++ 12 reports these falsely for std::string in optimised code (its bugs 105329 and 105651).
target_compile_options(vantroque_compile INTERFACE
    -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
# Arithmetic in single precision is compared exactly, so no fused multiply-add behind our back.
target_compile_options(vantroque_compile INTERFACE -ffp-contract=off)
if(VANTROQUE_SANITIZE)
    target_compile_options(vantroque_compile INTERFACE
        -fsanitize=${VANTROQUE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # g++ 12 warns falsely in instrumented code.
        -Wno-maybe-uninitialized)
    target_link_options(vantroque_compile INTERFACE -fsanitize=${VANTROQUE_SANITIZE})
endif()

# vantroque_kit(NAME SOURCES... USES targets...): one folder of the kit, one library, one floor.
function(vantroque_kit name)
    cmake_parse_arguments(PARSE_ARGV 1 KIT "" "" "SOURCES;USES")
    add_library(Vantroque${name} STATIC ${KIT_SOURCES})
    target_include_directories(Vantroque${name} PUBLIC ${CMAKE_SOURCE_DIR}/VantroqueKit)
    target_link_libraries(Vantroque${name} PUBLIC ${KIT_USES} PRIVATE vantroque_compile)
    target_precompile_headers(Vantroque${name} PRIVATE
        <QJsonArray> <QJsonObject> <QString> <QStringList> <algorithm> <optional> <vector>)
endfunction()
